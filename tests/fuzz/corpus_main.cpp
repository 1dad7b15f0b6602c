// SPDX-License-Identifier: MIT
// Gives a target, without libFuzzer, every file of the folders in its command line, whole and cut off. It
// ends with 0 unless the target breaks off, or a folder holds nothing.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

constexpr size_t MOST_CUTS = 400; ///< of one file; a shorter one is cut at every byte

std::vector<char> readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A copy of just that size, so that a reader that goes on behind the end is seen.
void give(const std::vector<char>& bytes, size_t size) {
    const std::vector<uint8_t> input(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
    LLVMFuzzerTestOneInput(input.data(), size);
}

size_t giveFolder(const std::filesystem::path& folder) {
    size_t inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::printf("%s\n", entry.path().c_str());
        std::fflush(stdout);
        const std::vector<char> bytes = readFile(entry.path());
        const size_t step = std::max<size_t>(1, bytes.size() / MOST_CUTS);
        for (size_t size = 0; size < bytes.size(); size += step) {
            give(bytes, size);
            ++inputs;
        }
        give(bytes, bytes.size());
        ++inputs;
    }
    return inputs;
}

} // namespace

int main(int argc, char** argv) {
    size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        inputs += giveFolder(argv[i]);
    }
    std::printf("%zu inputs\n", inputs);
    return inputs == 0 ? 1 : 0;
}
