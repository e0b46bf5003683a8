#include "cinder/audio/AudioFileWriter.h"
#include "cinder/audio/UserError.h"

#include "example_audio/Finish.h"
#include "example_audio/Instruments.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace {

using namespace cinder;

struct Recording {
    const char* name;
    example::Loop (*make)(int rate);
    int numChannels;
};

constexpr Recording recordings[] = {
    {"drums", example::makeDrums, 2},    {"chord", example::makeChord, 2},
    {"bass", example::makeBass, 2},      {"voice", example::makeVoice, 2},
    {"guitar", example::makeGuitar, 2},  {"mix", example::makeMix, 2},
    {"bass-mono", example::makeBass, 1}, {"voice-mono", example::makeVoice, 1},
};
constexpr int rates[] = {44100, 48000};

void write(const std::filesystem::path& path, const Recording& recording, int rate) {
    const auto channels = example::finished(recording.make(rate), recording.numChannels);
    std::vector<const float*> pointers;
    pointers.reserve(channels.size());
    for (const auto& channel : channels)
        pointers.push_back(channel.data());
    const auto numFrames = static_cast<int>(channels[0].size());
    AudioFileWriter writer(path, recording.numChannels, rate, numFrames);
    writer.write(pointers, numFrames);
    writer.commit();
}

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::fputs("usage: cinder-example-audio FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
    if (failed) throw systemError("create", folder, failed.value());
    for (const Recording& recording : recordings)
        for (const int rate : rates)
            write(folder / (std::string(recording.name) + "-" + std::to_string(rate) + ".wav"),
                  recording, rate);
    return 0;
} catch (const UserError& error) {
    std::fprintf(stderr, "cinder-example-audio: %s\n", error.what());
    return 1;
}
