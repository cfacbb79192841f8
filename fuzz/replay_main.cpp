#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "base/whole_file.h"
#include "fuzz_input.h"

// Feeds every file of the folders in the arguments to the target: what fuzzing once found stays mended, with
// any compiler.

int main(int argc, char** argv) {
  std::vector<std::filesystem::path> files;
  for (int i = 1; i < argc; ++i) {
    std::error_code error;
    for (std::filesystem::directory_iterator entry(argv[i], error), end; !error && entry != end;
         entry.increment(error))
      files.push_back(entry->path());
  }
  std::sort(files.begin(), files.end());
  for (const auto& file : files) {
    std::error_code error;
    const auto content = pallomir::ReadWholeFile(file, std::size_t{1} << 20, error);
    if (!content) {
      std::fprintf(stderr, "%s: %s\n", file.c_str(), error.message().c_str());
      return 1;
    }
    // Said before, so that the last line names the file that a run died of.
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(pallomir::AsBytes(*content).data(), content->size());
  }
  std::printf("%zu files\n", files.size());
  return files.empty() ? 1 : 0;
}
