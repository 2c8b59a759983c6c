// Where the tests of the built tools find them: in the build tree beside the module.
#pragma once

#include <filesystem>
#include <string>

namespace PackageTest {

inline const std::filesystem::path kBuildTree =
    std::filesystem::path(CORVELLE_MODULE_PATH).parent_path().parent_path();
inline const std::string kTool = (kBuildTree / "tools/corvelle").string();
inline const std::string kHost = (kBuildTree / "refhost/corvelle-host").string();
inline const std::string kSample =
    (kBuildTree / "examples/sample-project/sample.corvelle").string();

} // namespace PackageTest
