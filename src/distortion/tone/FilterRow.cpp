#include "distortion/tone/FilterRow.h"

#include <cmath>

namespace cinder {

namespace {

double shelfQ(double q) noexcept {
    const double a = std::log(q) * 0.13554251 + 0.5;
    const double b = std::log(std::pow(12.5, a) * 1.6) * 0.28853902;
    return std::pow(40.0, 2.0 * b - 1.0);
}

}  // namespace

float qForShape(FilterShape shape, float q) noexcept CINDER_REALTIME {
    switch (shape) {
        case FilterShape::LowShelf:
        case FilterShape::HighShelf:
            return static_cast<float>(shelfQ(static_cast<double>(q)));
        case FilterShape::Bell:
            return q * 0.94280904f;
        case FilterShape::LowPass:
        case FilterShape::HighPass:
            break;
    }
    return q;
}

}  // namespace cinder
