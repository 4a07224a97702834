// The least that any ride must do: decodes each file to float and encodes it as a 32-bit float wav, by bare
// libsndfile in one process. Usage: sndfile_floor FOLDER FILE...

#include <sndfile.hh>

#include <cstdio>
#include <filesystem>
#include <vector>

namespace {

bool copy_as_float(const std::filesystem::path& source, const std::filesystem::path& target) {
    SndfileHandle input(source.c_str());
    if (input.error() != SF_ERR_NO_ERROR)
        return false;
    SndfileHandle output(target.c_str(), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, input.channels(),
                         input.samplerate());
    constexpr sf_count_t block_frames = 16384;
    std::vector<float> block(static_cast<std::size_t>(input.channels() * block_frames));
    while (const sf_count_t frames = input.readf(block.data(), block_frames))
        if (output.writef(block.data(), frames) != frames)
            return false;
    return output.error() == SF_ERR_NO_ERROR;
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 2; i < argc; ++i) {
        const std::filesystem::path source = argv[i];
        if (!copy_as_float(source, std::filesystem::path(argv[1]) / source.filename())) {
            std::fprintf(stderr, "%s: not copied\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
