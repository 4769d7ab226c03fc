// Compiles scripts that a test gives as text, with files in a folder of the test's own.
#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/tools/rescomp/resource_script.h"
#include "platform/tools/rescomp/source_error.h"

namespace rescomp {

class ScriptFixture : public testing::Test {
 protected:
  ScriptFixture() {
    std::string pattern = (std::filesystem::temp_directory_path() / "rescomp-XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
  }
  ~ScriptFixture() override { std::filesystem::remove_all(folder_); }

  void Write(const std::string& name, std::string_view bytes) const {
    std::ofstream(folder_ / name, std::ios::binary) << bytes;
  }

  std::vector<CompiledResource> Compile(const std::string& script) const {
    const std::filesystem::path folders[] = {"/nowhere", folder_};
    return CompileScript(script, "script.i", folders);
  }

  void ExpectMistake(const std::string& script, const std::string& error) const {
    try {
      Compile(script);
      ADD_FAILURE() << "no error for " << script;
    } catch (const SourceError& found) {
      EXPECT_THAT(found.what(), testing::HasSubstr(error));
    }
  }

  std::filesystem::path folder_;
};

}  // namespace rescomp
