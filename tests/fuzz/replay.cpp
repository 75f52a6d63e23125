// replay.cpp - runs a fuzz target over the files and folders it is given, without a fuzzer.

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

static void _replay(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t *>(bytes.data()), bytes.size());
}

int main(int argc, char **argv)
{
    int count = 0;
    for (int i = 1; i < argc; i++)
    {
        if (!std::filesystem::is_directory(argv[i]))
        {
            _replay(argv[i]);
            count++;
            continue;
        }
        for (const auto &entry : std::filesystem::recursive_directory_iterator(argv[i]))
        {
            if (entry.is_regular_file())
            {
                _replay(entry.path());
                count++;
            }
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
