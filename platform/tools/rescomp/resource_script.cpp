#include "platform/tools/rescomp/resource_script.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

#include "platform/tools/rescomp/dialog_statement.h"
#include "platform/tools/rescomp/image_file.h"
#include "platform/tools/rescomp/token_stream.h"
#include "platform/tools/rescomp/version_info.h"

namespace rescomp {

namespace {

constexpr std::uint16_t kTypeBitmap = 2;
constexpr std::uint16_t kTypeIcon = 3;
constexpr std::uint16_t kTypeDialog = 5;
constexpr std::uint16_t kTypeIconGroup = 14;
constexpr std::uint16_t kTypeVersion = 16;

struct TypeKeyword {
  std::string_view word;
  std::uint16_t type;
};
constexpr std::array kFileTypes = {TypeKeyword{"RCDATA", 10}, TypeKeyword{"MESSAGETABLE", 11}};

class ScriptCompiler {
 public:
  ScriptCompiler(std::vector<Token> tokens, std::span<const std::filesystem::path> folders)
      : tokens_(std::move(tokens)), folders_(folders) {}

  std::vector<CompiledResource> Compile();

 private:
  void CompileStatement();
  void ReadLanguage();
  void CompileContent(CompiledResource& resource);
  void CompileIcon(CompiledResource& resource);
  void Add(CompiledResource resource, const SourcePlace& place);
  std::uint16_t ReadFileType();
  Bytes ReadNamedFile();

  TokenStream tokens_;
  std::span<const std::filesystem::path> folders_;
  std::uint16_t language_ = 0;  // neutral
  std::uint16_t nextIconImage_ = 1;
  std::vector<CompiledResource> resources_;
};

std::vector<CompiledResource> ScriptCompiler::Compile() {
  while (!tokens_.AtEnd()) {
    if (tokens_.Accept("LANGUAGE")) {
      ReadLanguage();
    } else {
      CompileStatement();
    }
  }
  return std::move(resources_);
}

void ScriptCompiler::ReadLanguage() {
  const std::uint32_t primary = tokens_.Number();
  tokens_.Expect(",");
  const std::uint32_t sublanguage = tokens_.Number();
  if (primary > 0x3FF || sublanguage > 0x3F) tokens_.Fail("there is no such language");
  language_ = static_cast<std::uint16_t>((sublanguage << 10) | primary);
}

void ScriptCompiler::CompileStatement() {
  const SourcePlace place = tokens_.Peek().place;
  CompiledResource resource;
  resource.name = tokens_.Number16();
  resource.language = language_;
  try {
    CompileContent(resource);
  } catch (const SourceError&) {
    throw;
  } catch (const std::runtime_error& error) {
    throw SourceError(place, error.what());
  }
  Add(std::move(resource), place);
}

void ScriptCompiler::CompileContent(CompiledResource& resource) {
  if (tokens_.Accept("VERSIONINFO")) {
    resource.type = kTypeVersion;
    resource.data = CompileVersionInfo(tokens_);
  } else if (tokens_.Accept("DIALOGEX") || tokens_.Accept("DIALOG")) {
    resource.type = kTypeDialog;
    resource.data = EncodeDialogTemplate(ReadDialogStatement(tokens_));
  } else if (tokens_.Accept("ICON")) {
    CompileIcon(resource);
  } else if (tokens_.Accept("BITMAP")) {
    resource.type = kTypeBitmap;
    resource.data = BitmapWithoutFileHeader(ReadNamedFile());
  } else {
    resource.type = ReadFileType();
    resource.data = ReadNamedFile();
  }
}

void ScriptCompiler::CompileIcon(CompiledResource& resource) {
  const SourcePlace place = tokens_.Peek().place;
  std::vector<IconImage> images = ReadIconFile(ReadNamedFile());
  resource.type = kTypeIconGroup;
  resource.data = EncodeIconGroup(images, nextIconImage_);
  for (IconImage& image : images)
    Add({kTypeIcon, nextIconImage_++, language_, std::move(image.data)}, place);
}

void ScriptCompiler::Add(CompiledResource resource, const SourcePlace& place) {
  const auto same = [&](const CompiledResource& other) {
    return other.type == resource.type && other.name == resource.name &&
           other.language == resource.language;
  };
  if (std::ranges::any_of(resources_, same)) {
    throw SourceError(place, "this resource comes twice in its language");
  }
  resources_.push_back(std::move(resource));
}

std::uint16_t ScriptCompiler::ReadFileType() {
  for (const TypeKeyword& keyword : kFileTypes) {
    if (tokens_.Accept(keyword.word)) return keyword.type;
  }
  if (tokens_.Peek().kind != TokenKind::kNumber) {
    tokens_.Fail("resources of type '" + tokens_.Peek().text + "' are not supported");
  }
  return tokens_.Number16();
}

Bytes ScriptCompiler::ReadNamedFile() {
  const SourcePlace place = tokens_.Peek().place;
  const std::string name = tokens_.String();
  for (const std::filesystem::path& folder : folders_) {
    std::ifstream file(folder / name, std::ios::binary);
    if (!file) continue;
    Bytes bytes(std::istreambuf_iterator<char>(file), {});
    if (bytes.empty()) throw SourceError(place, "the file '" + name + "' is empty");
    return bytes;
  }
  throw SourceError(place, "there is no file '" + name + "'");
}

}  // namespace

std::vector<CompiledResource> CompileScript(std::string_view script, const std::string& fileName,
                                            std::span<const std::filesystem::path> folders) {
  return ScriptCompiler(ReadTokens(script, fileName), folders).Compile();
}

}  // namespace rescomp
