// Runs a fuzz target over files, without libFuzzer: every file named, and
// every file in the directories named. ctest replays the committed corpus and
// the inputs that once broke a target (tests/data/fuzz/<target>/) this way.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    namespace fs = std::filesystem;
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<fs::path> files;
        if (fs::is_directory(argv[i])) {
            for (const auto& entry : fs::directory_iterator(argv[i]))
                if (entry.is_regular_file())
                    files.push_back(entry.path());
        } else if (fs::exists(argv[i])) {
            files.emplace_back(argv[i]);
        }
        for (const fs::path& file : files) {
            std::ifstream in(file, std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
            // An exact-size copy, so that a sanitizer build sees reads past the end.
            std::vector<uint8_t> input(bytes.begin(), bytes.end());
            std::fprintf(stderr, "%s\n", file.c_str());
            LLVMFuzzerTestOneInput(input.data(), input.size());
            ++count;
        }
    }
    std::fprintf(stderr, "%d inputs replayed\n", count);
    return 0;
}
