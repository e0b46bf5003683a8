#include "cinder/plot/Picture.h"

#include "cinder/audio/ReplacementFile.h"
#include "cinder/audio/UserError.h"
#include "cinder/plot/Drawing.h"

#include <cairo-svg.h>

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>

namespace cinder {

namespace {

struct CairoDeleter {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* cairo) const { cairo_destroy(cairo); }
};
using Surface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using Context = std::unique_ptr<cairo_t, CairoDeleter>;

cairo_status_t append(void* text, const unsigned char* bytes, unsigned count) {
    try {
        static_cast<std::string*>(text)->append(reinterpret_cast<const char*>(bytes), count);
        return CAIRO_STATUS_SUCCESS;
    } catch (const std::bad_alloc&) {
        return CAIRO_STATUS_NO_MEMORY;
    }
}

void throwIfFailed(cairo_status_t status) {
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(std::string("cannot draw: ") + cairo_status_to_string(status));
}

Surface makeSurface(const Figure& figure, PictureFormat format, std::string& bytes) {
    if (format == PictureFormat::Png)
        return Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, figure.width, figure.height));
    Surface svg(cairo_svg_surface_create_for_stream(append, &bytes, figure.width, figure.height));
    cairo_svg_surface_set_document_unit(svg.get(), CAIRO_SVG_UNIT_PX);
    return svg;
}

}  // namespace

PictureFormat pictureFormatFor(const std::filesystem::path& file) {
    std::string ending = file.extension().string();
    std::ranges::transform(ending, ending.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    if (ending == ".png") return PictureFormat::Png;
    if (ending == ".svg") return PictureFormat::Svg;
    throw UserError("cannot draw " + quoted(file) + ": its name must end in .png or .svg");
}

std::string encodePicture(const Figure& figure, PictureFormat format) {
    std::string bytes;
    const Surface surface = makeSurface(figure, format, bytes);
    const Context cairo(cairo_create(surface.get()));
    Canvas canvas(cairo.get());
    drawFigure(canvas, figure);
    throwIfFailed(cairo_status(cairo.get()));
    if (format == PictureFormat::Png)
        throwIfFailed(cairo_surface_write_to_png_stream(surface.get(), append, &bytes));
    cairo_surface_finish(surface.get());
    throwIfFailed(cairo_surface_status(surface.get()));
    return bytes;
}

void writePicture(const std::filesystem::path& path, const std::function<Figure()>& make) {
    const PictureFormat format = pictureFormatFor(path);
    ReplacementFile file(path);
    const std::string bytes = encodePicture(make(), format);
    file.write(bytes.data(), static_cast<std::int64_t>(bytes.size()));
    file.commit();
}

}  // namespace cinder
