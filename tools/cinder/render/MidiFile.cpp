#include "cinder/render/MidiFile.h"

#include "cinder/render/TextFile.h"

#include <cstddef>
#include <cstdio>

#include <mfmidi.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace cinder {

namespace {

constexpr double standardBeat = 0.5;    // seconds, until a tempo is given
constexpr int separateTracks = 2;       // the format
constexpr double longestSeconds = 1e7;  // no audio lasts as long

/// A file whose one message is longer than any whose bytes have a meaning. The library looks at
/// these bytes however short a message is, and has none before it has read the first one.
const std::string primer(
    "MThd\0\0\0\6\0\0\0\1\0\1MTrk\0\0\0\x10"
    "\0\xff\x7f\x08\0\0\0\0\0\0\0\0\0\xff\x2f\0",
    38);

/// What the library reads, on the file's own clock.
class TrackReader final : private Midifile_reader {
public:
    struct Timed {
        std::int64_t ticks;
        MidiEvent event;
    };
    struct Tempo {
        std::int64_t ticks;
        double beatSeconds;
    };

    explicit TrackReader(const std::filesystem::path& file) : file(file) {}
    ~TrackReader() { finalize(); }
    TrackReader(const TrackReader&) = delete;
    TrackReader& operator=(const TrackReader&) = delete;

    /// Once, and not in the constructor: what the library holds would outlive an error.
    void read(const std::string& content) {
        readAll(primer);
        readAll(content);
        if (numTracksAnnounced != numTracks) fail("it ends early");
        std::ranges::stable_sort(events, {}, &Timed::ticks);
        std::ranges::stable_sort(tempi, {}, &Tempo::ticks);
    }
    /// Of each event, in order.
    std::vector<MidiFileEvent> timed() const;

private:
    [[noreturn]] void fail(const std::string& what) const {
        throw UserError("cannot read " + quoted(file) + ": " + what);
    }
    void readAll(const std::string& content) {
        bytes = &content;
        position = 0;
        numTracks = 0;
        midifile();
    }
    void add(int status, int channel, int data1, int data2 = 0) {
        if ((data1 | data2) > 127) fail("it is damaged");
        events.push_back({Mf_currtime,
                          {static_cast<std::uint8_t>(status | channel),
                           static_cast<std::uint8_t>(data1), static_cast<std::uint8_t>(data2)}});
    }

    // What the library asks for.
    void* Mf_malloc(std::size_t size) override { return std::malloc(size); }
    void Mf_free(void* object, std::size_t) override { std::free(object); }
    int Mf_getc() override {
        return position < bytes->size() ? static_cast<unsigned char>((*bytes)[position++]) : EOF;
    }

    // What it tells.
    void Mf_error(char* what) override { fail(what); }
    void Mf_header(int format, int tracks, int division) override;
    void Mf_starttrack() override { ++numTracks; }
    void Mf_off(int channel, int note, int velocity) override {
        add(NOTEOFF, channel, note, velocity);
    }
    void Mf_on(int channel, int note, int velocity) override {
        add(NOTEON, channel, note, velocity);
    }
    void Mf_pressure(int channel, int note, int value) override {
        add(PRESSURE, channel, note, value);
    }
    void Mf_controller(int channel, int number, int value) override {
        add(CONTROLLER, channel, number, value);
    }
    void Mf_pitchbend(int channel, int low, int high) override {
        add(PITCHBEND, channel, low, high);
    }
    void Mf_program(int channel, int program) override { add(PROGRAM, channel, program); }
    void Mf_chanpressure(int channel, int value) override { add(CHANPRESSURE, channel, value); }
    void Mf_tempo(int microseconds) override {
        tempi.push_back({Mf_currtime, microseconds * 1e-6});
    }

    // And what says nothing to us.
    void Mf_endtrack() override {}
    void Mf_chanprefix(int) override {}
    void Mf_portprefix(int) override {}
    void Mf_eot() override {}
    void Mf_sysex(int, unsigned char*) override {}
    void Mf_arbitrary(int, unsigned char*) override {}
    void Mf_metamisc(int, int, unsigned char*) override {}
    void Mf_seqnum(int) override {}
    void Mf_smpte(int, int, int, int, int) override {}
    void Mf_timesig(int, int, int, int) override {}
    void Mf_keysig(int, int) override {}
    void Mf_sqspecific(int, unsigned char*) override {}
    void Mf_text(int, int, unsigned char*) override {}

    const std::filesystem::path& file;
    const std::string* bytes = nullptr;
    std::size_t position = 0;
    int numTracksAnnounced = 0, numTracks = 0;
    double ticksPerBeat = 0.0;
    double secondsPerTick = 0.0;  // where a tick is a part of a frame; else 0
    std::vector<Timed> events;
    std::vector<Tempo> tempi;
};

void TrackReader::Mf_header(int format, int tracks, int division) {
    if (format == separateTracks) fail("its tracks are pieces of their own (format 2)");
    numTracksAnnounced = tracks;
    if (division & 0x8000) {
        const int rate = 256 - ((division >> 8) & 0xff), ticks = division & 0xff;
        // 29 stands for the 30 frames of colour television, which take 1.001 seconds.
        const double framesPerSecond = rate == 29 ? 30.0 / 1.001 : rate;
        secondsPerTick = 1.0 / (framesPerSecond * ticks);
    }
    ticksPerBeat = division;
    if ((division & 0xff) == 0 && (division & 0x8000 || division == 0)) fail("it has no clock");
}

std::vector<MidiFileEvent> TrackReader::timed() const {
    std::vector<MidiFileEvent> timed;
    double seconds = 0.0, tickSeconds = secondsPerTick;
    if (secondsPerTick == 0.0) tickSeconds = standardBeat / ticksPerBeat;
    std::int64_t now = 0;
    auto tempo = tempi.begin();
    const auto goTo = [&](std::int64_t ticks) {
        seconds += static_cast<double>(ticks - now) * tickSeconds;
        now = ticks;
    };
    for (const auto& [ticks, event] : events) {
        for (; secondsPerTick == 0.0 && tempo != tempi.end() && tempo->ticks <= ticks; ++tempo) {
            goTo(tempo->ticks);
            tickSeconds = tempo->beatSeconds / ticksPerBeat;
        }
        goTo(ticks);
        if (seconds < longestSeconds) timed.push_back({seconds, event});
    }
    return timed;
}

}  // namespace

std::vector<MidiFileEvent> readMidiFile(const std::filesystem::path& file) {
    const std::string bytes = readWhole(file);
    TrackReader reader(file);
    reader.read(bytes);
    return reader.timed();
}

}  // namespace cinder
