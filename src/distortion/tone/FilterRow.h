#pragma once

#include "core/Realtime.h"
#include "dsp/filters/FilterTables.h"

namespace cinder {

/// One filter of a recipe. A low pass and a high pass have no use for the dB.
struct FilterRow {
    float hz;
    float gainDb;
    float q;  // as recipes write it, see qForShape
    FilterShape shape;
    FilterSlope slope = FilterSlope::Poles2;
};

/// The Q of an equaliser for the Q of a recipe:
///   shelves   40^(2 b - 1), b = 0.28853902 ln(1.6 * 12.5^a), a = 0.13554251 ln q + 0.5
///   bell      q * 0.94280904 = q * 2 sqrt(2) / 3, which is a bandwidth of 1.5 / q in the design
///   others    q
/// Range   q above 0. Shelves: 0.025..40 give 0.068..14.7 and 1 gives 1; the equaliser designs
///         these with 0.2 * 12.5^a, that is 0.2..2.5, in place of its own 0.125..4
float qForShape(FilterShape shape, float q) noexcept CINDER_REALTIME;  ///< [any]

}  // namespace cinder
