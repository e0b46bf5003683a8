#include "cinder/render/RenderReport.h"

#include "cinder/TextTable.h"

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cstdio>

namespace cinder {

namespace {

[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...) {
    char text[64];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

/// 7.250 s, 1:07.250, 2:01:07.250
std::string durationText(double seconds) {
    const auto milliseconds = std::llround(seconds * 1000.0);
    const long long minutes = milliseconds / 60'000;
    const double rest = static_cast<double>(milliseconds % 60'000) / 1000.0;
    if (minutes == 0) return formatted("%.3f s", rest);
    if (minutes < 60) return formatted("%lld:%06.3f", minutes, rest);
    return formatted("%lld:%02lld:%06.3f", minutes / 60, minutes % 60, rest);
}

std::vector<std::string> rowOf(const char* name, const RenderReport::Side& side) {
    return {name,
            durationText(static_cast<double>(side.numFrames) / side.sampleRate),
            std::to_string(side.sampleRate) + " Hz",
            std::to_string(side.numChannels),
            formatted("%.2f dBFS", side.levels.peakDb()),
            formatted("%.2f dBFS", side.levels.rmsDb())};
}

std::string speedText(double seconds, double secondsTaken) {
    // A clock may stand still over a very short file.
    const double speed = seconds / std::max(secondsTaken, 1e-6);
    return formatted(speed < 10.0 ? "%.1f times real time" : "%.0f times real time", speed);
}

std::string samplesText(std::int64_t count, const char* what) {
    return std::to_string(count) + (count == 1 ? " sample " : " samples ") + what;
}

/// A row a line, the first one named.
void addLines(TextTable& table, std::string name, const std::string& lines) {
    for (std::size_t from = 0; from < lines.size();) {
        const std::size_t end = std::min(lines.find('\n', from), lines.size());
        table.addRow({name, lines.substr(from, end - from)});
        name.clear();
        from = end + 1;
    }
}

}  // namespace

std::string RenderReport::text() const {
    TextTable files("ll");
    files.addRow({"in", in.file});
    files.addRow({"out", out.file});
    for (const auto& [what, how] : with)
        addLines(files, what, how);

    TextTable figures("lrrrrr");
    figures.addRow({"", "duration", "rate", "channels", "peak", "RMS"});
    figures.addRow(rowOf("in", in));
    figures.addRow(rowOf("out", out));

    TextTable rest("ll");
    rest.addRow({"latency", samplesText(latencySamples, "") +
                                formatted("(%.3f ms), ", 1000.0 * latencySamples / out.sampleRate) +
                                (isLatencyTakenOut ? "taken out" : "left in")});
    const double seconds = static_cast<double>(out.numFrames) / out.sampleRate;
    rest.addRow({"speed", speedText(seconds, secondsTaken)});
    if (const std::int64_t count = in.levels.numNonFinite())
        rest.addRow({"note", samplesText(count, "of the input not finite, taken as silence")});
    rest.addRow({"clipped", numClipped == 0
                                ? std::string("no sample")
                                : samplesText(numClipped, "at full scale; .wav holds more")});
    return files.text() + '\n' + figures.text() + '\n' + rest.text();
}

}  // namespace cinder
