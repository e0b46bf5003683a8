#include "params/tree/StandaloneParameters.h"
#include "presets/factory/Loudness.h"
#include "presets/factory/PresetSound.h"
#include "presets/factory/PresetSource.h"
#include "presets/format/ComponentKind.h"
#include "presets/format/PresetConversion.h"

#include <doctest/doctest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>

namespace cinder::test {

namespace {

constexpr double loudnessRange = 6.0;    // LU around the dry audio
constexpr double silentLufs = -45.0;     // what is this soft says nothing
constexpr float fullScale = 1.0f;        // where the output clipper ends
constexpr float nearFullScale = 0.98f;   // where a peak has lost its shape
constexpr double mostNearFull = 0.0005;  // of all samples
constexpr double restDb = -20.0;         // at the end of the silence, against the music
constexpr double leastDistance = 0.5;    // dB between two pictures

const std::string factoryFolder = CINDER_PRESETS_FOLDER "/factory";
const std::string componentFolder = CINDER_PRESETS_FOLDER "/components/";

const std::set<std::string> folders = {"",
                                       "Drums",
                                       "FX",
                                       "Guitar Amps/Crunchy",
                                       "Guitar Amps/Lead",
                                       "Guitar Amps/Rack",
                                       "Guitar Amps/Smooth",
                                       "Guitar Amps/Stomp",
                                       "MIDI Triggered",
                                       "Mastering",
                                       "Saturation",
                                       "Sequence",
                                       "Various",
                                       "_Allround/Allround Saturation",
                                       "_Allround/Crisp and Mid Saturation",
                                       "_Allround/Lo-Fi and Broken",
                                       "_Best Of"};

/// By the folders of their kinds.
const std::map<std::string, std::set<std::string>> components = {
    {"Band",
     {"Default", "Funky Guitar", "Gate", "Jazz Guitar", "Juicy Tape", "Lead Guitar", "Power Guitar",
      "Pump", "Smudge", "Total Destruction", "Vocal Spice"}},
    {"XLFO",
     {"12 Step Sequence 1",
      "12 Step Sequence 2",
      "16 Step Sequence 1",
      "16 Step Sequence 2",
      "16 Step Sequence 3",
      "16 Step Sequence 4",
      "4 Step Sequence 1",
      "4 Step Sequence 2",
      "6 Step Sequence 1",
      "6 Step Sequence 2",
      "8 Step Sequence 1",
      "Beat",
      "Beat 2",
      "Default",
      "Heart Beat",
      "Sample & Hold",
      "Sample & Hold Full Glide",
      "Sample & Hold Medium Glide",
      "Sawtooth",
      "Sine",
      "Spring",
      "Square",
      "Triangle"}},
    {"EG", {"Default", "Fast", "Long", "Medium"}},
    {"EF", {"Default", "Fast", "Long", "Medium"}},
    {"MIDI",
     {"Aftertouch", "Default", "Keyboard Tracking", "Mod Wheel", "Pitch Bend", "Sustain Pedal",
      "Velocity", "Volume Controller"}}};

Channels withoutSilence(Channels sound) {
    for (auto& channel : sound)
        channel.resize(audibleLength());
    return sound;
}

double rmsDb(const Channels& sound, std::size_t from) {
    double sum = 0.0;
    for (const auto& channel : sound)
        for (std::size_t n = from; n < channel.size(); ++n)
            sum += std::pow(static_cast<double>(channel[n]), 2.0);
    return 10.0 * std::log10(sum / static_cast<double>(2 * (sound[0].size() - from)) + 1e-20);
}

/// Sane, loud enough and not too loud, and quiet again when the music has gone.
void checkSound(const PresetHead& head, const Channels& wet, const Channels& dry) {
    float peak = 0.0f;
    std::size_t numNearFull = 0, numNotFinite = 0;
    for (const auto& channel : wet)
        for (const float x : channel) {
            numNotFinite += std::isfinite(x) ? 0 : 1;
            peak = std::max(peak, std::abs(x));
            numNearFull += std::abs(x) > nearFullScale ? 1 : 0;
        }
    CHECK(numNotFinite == 0);
    CHECK(peak <= fullScale);
    CHECK(static_cast<double>(numNearFull) < mostNearFull * static_cast<double>(2 * wet[0].size()));
    const Channels heard = withoutSilence(wet);
    const double loudness = loudnessOf(heard);
    CHECK(loudness > silentLufs);
    if (head.loudness.empty())
        CHECK(std::abs(loudness - loudnessOf(withoutSilence(dry))) < loudnessRange);
    CHECK(rmsDb(wet, wet[0].size() - presetRate / 5) < rmsDb(heard, 0) + restDb);
}

/// What the parameters are once the preset has been a file of its format.
std::vector<float> asLoaded(const PresetSource& source) {
    static const StandaloneParameters tree;
    const auto layout = factoryLayout(source.text.head.format.value_or(presetVersion));
    REQUIRE(layout);
    std::string fault;
    const auto content = contentOf(source.values, *layout, tree, fault);
    REQUIRE_MESSAGE(content, fault);
    return presentValues(*content, tree).value();
}

using Pictures = std::map<std::string, Picture>;  // by preset

/// Like nothing that was heard before on the same audio, however loud: a copy is no preset.
void checkIsNew(const std::string& name, const Picture& picture, Pictures& others) {
    for (const auto& [other, its] : others) {
        INFO("beside " << other);
        CHECK(distanceOf(picture, its) > leastDistance);
    }
    others[name] = picture;
}

}  // namespace

TEST_CASE("FactoryPresets: each sounds, stays sane, keeps its loudness, and is like no other") {
    std::map<std::string, Pictures> pictures;  // by audio
    for (const PresetSource& source : readPresetSources(factoryFolder)) {
        const PresetHead& head = source.text.head;
        INFO(source.folder << "/" << source.name);
        const Channels& dry = dryAudio(head.audio);
        const Channels wet = renderPreset(asLoaded(source), dry);
        checkSound(head, wet, dry);
        Pictures& others = pictures[head.audio];
        if (source.name == "Clean") {
            CHECK(wet == dry);
            continue;
        }
        // Where a new instance starts, next to nothing is heard.
        if (source.name != "Default Setting") others.try_emplace("nothing", pictureOf(dry));
        checkIsNew(source.name, pictureOf(wet), others);
    }
}

TEST_CASE("FactoryPresets: every folder has some, each says what it is for, some are old") {
    std::set<std::string> found, names;
    std::map<int, int> formats;
    for (const PresetSource& source : readPresetSources(factoryFolder)) {
        INFO(source.folder << "/" << source.name);
        found.insert(source.folder);
        ++formats[source.text.head.format.value_or(presetVersion)];
        CHECK(names.insert(source.name).second);  // one may be looked for by its name alone
        CHECK(source.folder.empty() ==
              (source.name == "Clean" || source.name == "Default Setting"));
        CHECK_FALSE(source.text.head.intent.empty());
        CHECK_FALSE(source.text.head.tags.empty());
    }
    CHECK(found == folders);
    CHECK(names.size() >= 40);
    CHECK(formats[1] >= 3);
    CHECK(formats[2] >= 5);
    CHECK(formats[3] == 0);
}

TEST_CASE("FactoryPresets: the components are there, and each keeps to its own set") {
    const StandaloneParameters tree;
    for (const ComponentKind& kind : componentKinds()) {
        const std::string folder(kind.folder);
        std::set<std::string> names;
        std::set<std::vector<float>> contents;
        for (const PresetSource& source : readPresetSources(componentFolder + folder)) {
            INFO(folder << "/" << source.name);
            std::string fault;
            CHECK_MESSAGE(componentContentOf(source.values, kind, tree, fault), fault);
            CHECK_FALSE(source.text.head.intent.empty());
            names.insert(source.name);
            if (source.name != "Default") CHECK(contents.insert(source.values).second);
        }
        CHECK(names == components.at(folder));
    }
    for (const PresetSource& band : readPresetSources(componentFolder + "Band")) {
        INFO(band.name);
        const Channels& dry = dryAudio(band.text.head.audio);
        checkSound(band.text.head, renderPreset(band.values, dry), dry);
    }
}

}  // namespace cinder::test
