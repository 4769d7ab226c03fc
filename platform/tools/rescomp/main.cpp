// The resource compiler.
//
//   rescomp messages FILE.mc FOLDER         FOLDER/FILE.rc and a table file for each language
//   rescomp script FILE.i SOURCE FOLDER...  SOURCE, from a preprocessed script; its files are
//   looked
//                                           for in the folders
//
// Exit code 1 with one line on standard error when it fails.
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <span>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/tools/rescomp/generated_source.h"
#include "platform/tools/rescomp/message_source.h"
#include "platform/tools/rescomp/resource_script.h"

namespace rescomp {

namespace {

std::ifstream OpenInput(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) throw std::runtime_error(path.string() + ": cannot be read");
  return file;
}

void WriteFile(const std::filesystem::path& path, std::string_view bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) throw std::runtime_error(path.string() + ": cannot be written");
}

void CompileMessages(const std::filesystem::path& input, const std::filesystem::path& folder) {
  std::ifstream file = OpenInput(input);
  const std::vector<MessageTable> tables = ReadMessageSource(file, input.string());
  for (const MessageTable& table : tables) {
    const Bytes bytes = EncodeMessageTable(table.texts);
    WriteFile(folder / (table.fileStem + ".bin"),
              {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  }
  WriteFile(folder / input.filename().replace_extension(".rc"), MessageTableScript(tables));
}

void CompileResources(const std::filesystem::path& input, const std::filesystem::path& output,
                      std::span<const std::filesystem::path> folders) {
  std::ifstream file = OpenInput(input);
  const std::string script(std::istreambuf_iterator<char>(file), {});
  std::ostringstream source;
  WriteSource(source, CompileScript(script, input.string(), folders));
  WriteFile(output, source.str());
}

int Run(const std::vector<std::filesystem::path>& arguments) {
  if (arguments.size() == 3 && arguments[0] == "messages") {
    CompileMessages(arguments[1], arguments[2]);
  } else if (arguments.size() >= 3 && arguments[0] == "script") {
    CompileResources(arguments[1], arguments[2], std::span(arguments).subspan(3));
  } else {
    std::cerr << "usage: rescomp messages FILE.mc FOLDER\n"
                 "       rescomp script FILE.i SOURCE FOLDER...\n";
    return 1;
  }
  return 0;
}

}  // namespace

}  // namespace rescomp

int main(int argc, char** argv) {
  try {
    return rescomp::Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
