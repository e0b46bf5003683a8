#include "cinder/plot/Picture.h"

#include "cinder/plot/Canvas.h"
#include "support/Rng.h"
#include "tools/audio/AudioFixtures.h"

#include <doctest/doctest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace cinder::test {

namespace {

constexpr double gap = std::numeric_limits<double>::quiet_NaN();

Figure someFigure(int width, int height) {
    Figure figure;
    figure.title = "A title <that> is & \"escaped\"";
    figure.width = width;
    figure.height = height;
    figure.addPanel("", {"Hz", Axis::Kind::Hertz, 20.0, 20000.0},
                    {"dB", Axis::Kind::Decibels, -60.0, 6.0},
                    {{"line", palette::apart[0], {{20.0, 0.0}, {500.0, gap}, {20000.0, -1e9}}},
                     {"stems", palette::apart[1], {{500.0, -3.0}}, Series::Look::Stems}});
    return figure;
}

unsigned bigEndian(const std::string& bytes, std::size_t at) {
    unsigned value = 0;
    for (std::size_t i = at; i < at + 4; ++i)
        value = value << 8 | static_cast<unsigned char>(bytes[i]);
    return value;
}

/// Of every tag that opens there is one that closes, in the right order.
bool isBalanced(const std::string& xml) {
    std::vector<std::string> open;
    for (auto at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
        const auto end = xml.find('>', at);
        if (end == std::string::npos) return false;
        const std::string tag = xml.substr(at + 1, end - at - 1);
        if (tag.starts_with('?') || tag.ends_with('/')) continue;
        const std::string name = tag.substr(0, tag.find_first_of(" \n"));
        if (!name.starts_with('/'))
            open.push_back(name);
        else if (open.empty() || '/' + open.back() != name)
            return false;
        else
            open.pop_back();
    }
    return open.empty();
}

}  // namespace

TEST_CASE("encodePicture: a PNG and an SVG of the figure's size") {
    const Figure figure = someFigure(640, 480);
    const std::string png = encodePicture(figure, PictureFormat::Png);
    CHECK(png.starts_with("\x89PNG\r\n\x1a\n"));
    CHECK(bigEndian(png, 16) == 640);
    CHECK(bigEndian(png, 20) == 480);
    CHECK((png == encodePicture(figure, PictureFormat::Png)));

    const std::string svg = encodePicture(figure, PictureFormat::Svg);
    CHECK(svg.starts_with("<?xml"));
    CHECK(svg.find("width=\"640px\" height=\"480px\"") != std::string::npos);
    CHECK(isBalanced(svg));
    CHECK(svg.find("nan") == std::string::npos);
}

TEST_CASE("writePicture: the ending chooses, and a failure leaves what was there") {
    const TemporaryFolder folder;
    writePicture(folder / "a.PNG", [] { return someFigure(480, 480); });
    writePicture(folder / "b.svg", [] { return someFigure(480, 480); });
    CHECK(bytesOf(folder / "a.PNG").starts_with("\x89PNG"));
    CHECK(bytesOf(folder / "b.svg").starts_with("<?xml"));

    const auto drawNothing = []() -> Figure { throw UserError("no figure"); };
    const std::string before = bytesOf(folder / "b.svg");
    CHECK(errorOf([&] { writePicture(folder / "b.svg", drawNothing); }) == "no figure");
    CHECK(bytesOf(folder / "b.svg") == before);
    for (const char* name : {"c.jpg", "c", ".png", "missing/c.png"})
        CHECK(isOneLine(errorOf([&] { writePicture(folder / name, drawNothing); })));
    CHECK(errorOf([&] { writePicture(folder / "c.jpg", drawNothing); }).find(".png or .svg") !=
          std::string::npos);
    CHECK(folder.names() == std::vector<std::string>{"a.PNG", "b.svg"});
}

TEST_CASE("simplified: leaves out what nobody sees, and keeps ends and corners") {
    std::vector<Point> line;
    for (int i = 0; i <= 1000; ++i)
        line.push_back({i * 1.0, i < 500 ? 0.0 : i - 500.0});
    CHECK(simplified(line, 0.1).size() == 3);

    Rng rng = Rng::fromEnvironment();
    INFO("seed " << rng.seed());
    std::vector<Point> noise;
    for (int i = 0; i < 300; ++i)
        noise.push_back({i * 1.0, rng.real(0.0, 3.0)});
    const auto fewer = simplified(noise, 0.8);
    CHECK(fewer.size() < noise.size());
    // Every point that is gone lies near one of the pieces that are left.
    std::size_t piece = 1;
    for (const Point& point : noise) {
        while (point.x > fewer[piece].x)
            ++piece;
        const Point &a = fewer[piece - 1], &b = fewer[piece];
        const double height = a.y + (b.y - a.y) * (point.x - a.x) / (b.x - a.x);
        const double slant = std::hypot(b.x - a.x, b.y - a.y) / (b.x - a.x);
        CHECK(std::abs(point.y - height) / slant <= 0.8 + 1e-9);
    }
}

}  // namespace cinder::test
