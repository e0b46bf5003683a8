#pragma once

#include "distortion/styles/StyleSet.h"
#include "modulation/sources/dynamics/Capacitor.h"
#include "modulation/sources/envelopes/EnvelopeCurves.h"

namespace cinder {

/// What all processors of a process share: tables and recipes, made for the first one and freed
/// with the last.
/// State   immutable once made
struct SharedTables {
    Capacitor::Style capacitorStyle;
    StyleSet styles;
    EnvelopeCurves envelopeCurves;

    /// There while a processor lives.
    static const SharedTables& get();

    // Under the process-wide lock.
    static void create();
    static void destroy();
};

}  // namespace cinder
