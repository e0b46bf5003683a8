#pragma once

#include "cinder/plot/Figure.h"

#include <filesystem>
#include <functional>
#include <string>

namespace cinder {

enum class PictureFormat { Png, Svg };

/// By the ending of the name, in upper or lower case.
/// Errors  UserError, which names the endings there are
PictureFormat pictureFormatFor(const std::filesystem::path& file);

/// The bytes of a file. The letters of an SVG are shapes, so that it needs no font.
std::string encodePicture(const Figure& figure, PictureFormat format);

/// Draws what `make` answers into a file that appears when it is whole. Whether the file can be
/// written is known before anything is computed.
/// Errors  UserError: unknown ending, and those of ReplacementFile
void writePicture(const std::filesystem::path& file, const std::function<Figure()>& make);

}  // namespace cinder
