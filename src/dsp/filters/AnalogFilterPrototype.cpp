#include "dsp/filters/AnalogFilterPrototype.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/Constants.h"

namespace cinder {

namespace {

using std::complex;

constexpr double butterworthQ = 0.70710677;
constexpr double leastDamping = 0.035355337;  // that of a second-order section with a Q of 40

bool isZero(double value) noexcept {
    return std::abs(static_cast<float>(value)) <= sameValue;
}

/// p(j x).
complex<double> onImaginaryAxis(const AnalogFilterPrototype::Polynomial& p, double x) noexcept {
    return {p.s0 - p.s2 * x * x, p.s1 * x};
}

/// The roots of the Butterworth polynomials in the upper half plane, order by order. Filters whose
/// controls move are designed too often to work them out each time.
class ButterworthRoots {
public:
    ButterworthRoots() {
        for (int order = 1; order <= highestOrder; ++order)
            for (int k = 0; 2 * k < order; ++k) {
                const double angle = (k + 0.5) * std::numbers::pi / order;
                roots[order][k] = {-std::sin(angle), std::cos(angle)};
            }
    }
    complex<double> of(int order, int k) const { return roots[order][k]; }

private:
    static constexpr int highestOrder = 2 * AnalogFilterPrototype::maxSections;
    complex<double> roots[highestOrder + 1][AnalogFilterPrototype::maxSections];
};
const ButterworthRoots butterworthRoots;

double damped(double s1, double factor) noexcept {
    return std::max(s1 * factor, leastDamping);
}

}  // namespace

// One section.

complex<double> AnalogFilterPrototype::BiquadPrototype::getResponse(double frequency) noexcept
    CINDER_REALTIME {
    const double x = frequency * inverseCentre;
    return onImaginaryAxis(numerator, x) / onImaginaryAxis(denominator, x);
}

void AnalogFilterPrototype::BiquadPrototype::getMagnitudeSquared(
    const float* frequencies, float* magnitudes, int count) noexcept CINDER_REALTIME {
    updateMagnitudes();
    for (int i = 0; i < count; ++i)
        magnitudes[i] = static_cast<float>(static_cast<double>(magnitudes[i]) *
                                           magnitudeAt(static_cast<double>(frequencies[i])));
}

double AnalogFilterPrototype::BiquadPrototype::getMagnitudeSquared(double frequency) noexcept
    CINDER_REALTIME {
    updateMagnitudes();
    return magnitudeAt(frequency);
}

void AnalogFilterPrototype::BiquadPrototype::setFrequency(
    double frequency, double inverseFrequency) noexcept CINDER_REALTIME {
    centre = frequency;
    inverseCentre = inverseFrequency;
    magnitudesAreValid = false;
}

void AnalogFilterPrototype::BiquadPrototype::setPolynomials(
    const Polynomial& newNumerator, const Polynomial& newDenominator) noexcept CINDER_REALTIME {
    numerator = newNumerator;
    denominator = newDenominator;
    magnitudesAreValid = false;
}

bool AnalogFilterPrototype::BiquadPrototype::isFirstOrder() const noexcept CINDER_REALTIME {
    return isZero(numerator.s2) && isZero(denominator.s2);
}

AnalogFilterPrototype::BiquadPrototype::Magnitude
AnalogFilterPrototype::BiquadPrototype::magnitudeOf(const Polynomial& p) const noexcept
    CINDER_REALTIME {
    const double w = centre * centre;
    if (isFirstOrder()) return {0.0, p.s1 * p.s1, p.s0 * p.s0 * w};
    const double c = p.s0 * w;
    return {p.s2 * p.s2, (p.s1 * p.s1 - 2.0 * p.s2 * p.s0) * w, c * c};
}

void AnalogFilterPrototype::BiquadPrototype::updateMagnitudes() noexcept CINDER_REALTIME {
    if (magnitudesAreValid) return;
    ofNumerator = magnitudeOf(numerator);
    ofDenominator = magnitudeOf(denominator);
    magnitudesAreValid = true;
}

double AnalogFilterPrototype::BiquadPrototype::magnitudeAt(double frequency) const noexcept
    CINDER_REALTIME {
    const double w = frequency * frequency;
    const auto at = [w](const Magnitude& m) { return (m.a * w + m.b) * w + m.c; };
    return std::max(0.0, at(ofNumerator) / at(ofDenominator));
}

// The whole filter.

complex<double> AnalogFilterPrototype::getResponse(double frequency) noexcept CINDER_REALTIME {
    complex<double> product = 1.0;
    for (int i = 0; i < numSections; ++i)
        product *= sections[i].getResponse(frequency);
    return product;
}

void AnalogFilterPrototype::getMagnitudeSquared(const float* frequencies, float* magnitudes,
                                                int count) noexcept CINDER_REALTIME {
    std::fill_n(magnitudes, count, 1.0f);
    for (int i = 0; i < numSections; ++i)
        sections[i].getMagnitudeSquared(frequencies, magnitudes, count);
}

double AnalogFilterPrototype::getMagnitudeSquared(double frequency) noexcept CINDER_REALTIME {
    double product = 1.0;
    for (int i = 0; i < numSections; ++i)
        product *= sections[i].getMagnitudeSquared(frequency);
    return product;
}

void AnalogFilterPrototype::setFrequency(double frequency,
                                         double inverseFrequency) noexcept CINDER_REALTIME {
    for (BiquadPrototype& section : sections)
        section.setFrequency(frequency, inverseFrequency);
}

void AnalogFilterPrototype::design(Shape shape, int numPoles, double gain,
                                   double q) noexcept CINDER_REALTIME {
    const FilterShapeRow& row = rowOf(shape);
    const bool isBandPass = row.transformation == FilterTransformation::ToBandPass;
    const int order = isBandPass ? (numPoles + 1) / 2 : numPoles;
    const double apart = row.usesGain ? std::pow(gain, 0.5 / order) : 1.0;

    numSections = 0;
    for (int k = 0; 2 * k < order; ++k) {
        complex<double> root = butterworthRoots.of(order, k);
        const bool isReal = static_cast<float>(root.imag()) <= sameValue;
        if (isReal) root.imag(0.0);
        const Roots zeros = {root * apart, isReal};
        const Roots poles = {root / apart, isReal};
        if (isBandPass) {
            addBandPass(zeros, poles, q);
            continue;
        }
        Polynomial n = row.usesGain ? polynomialOf(zeros) : Polynomial();
        Polynomial d = polynomialOf(poles);
        if (k == 0 && !isReal) {
            if (!isZero(n.s1)) n.s1 = damped(n.s1, butterworthQ / q);
            d.s1 = damped(d.s1, butterworthQ / q);
        }
        if (row.transformation == FilterTransformation::ToHighPass) {
            std::swap(isReal ? n.s1 : n.s2, n.s0);
            std::swap(isReal ? d.s1 : d.s2, d.s0);
        }
        addSection(n, d);
    }
}

AnalogFilterPrototype::Polynomial AnalogFilterPrototype::polynomialOf(const Roots& roots) noexcept
    CINDER_REALTIME {
    if (roots.isReal) return {0.0, 1.0, -roots.root.real()};
    return {1.0, -2.0 * roots.root.real(), std::norm(roots.root)};
}

void AnalogFilterPrototype::addSection(const Polynomial& numerator,
                                       const Polynomial& denominator) noexcept CINDER_REALTIME {
    if (numSections < maxSections) sections[numSections++].setPolynomials(numerator, denominator);
}

/// A real root gives one section. A pair gives two, whose centres lie as far below as above 1: a
/// root r becomes the two solutions of q (s + 1 / s) = r, which are the inverse of one another.
void AnalogFilterPrototype::addBandPass(const Roots& zeros, const Roots& poles,
                                        double q) noexcept CINDER_REALTIME {
    if (poles.isReal) {
        const Polynomial n = polynomialOf(zeros);
        const Polynomial d = polynomialOf(poles);
        addSection({q * n.s1, n.s0, q * n.s1}, {q * d.s1, d.s0, q * d.s1});
        return;
    }
    const auto lower = [q](complex<double> root) {
        const complex<double> half = root / (2.0 * q);
        const complex<double> distance = std::sqrt(half * half - 1.0);
        const complex<double> one = half + distance, other = half - distance;
        return std::norm(one) < std::norm(other) ? one : other;
    };
    const complex<double> zero = lower(zeros.root), pole = lower(poles.root);
    addSection(polynomialOf({zero, false}), polynomialOf({pole, false}));
    addSection(polynomialOf({1.0 / zero, false}), polynomialOf({1.0 / pole, false}));
}

}  // namespace cinder
