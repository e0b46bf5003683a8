#pragma once

#include <array>

#include "dsp/filters/AnalogFilterPrototypeBase.h"
#include "dsp/filters/FilterTables.h"

namespace cinder {

/// An equaliser as a product of sections of first and second order, from a Butterworth low-pass:
///   poles p = exp(j pi (0.5 + (k + 0.5) / N)), k = 0.. from the least damped pair on
///   shelves and bell: zeros p G and poles p / G with G = gain^(0.5 / N)
///   first section: s^1 times 0.7071 / q, so q moves the highest resonance alone
///   then s as the shape's row of `filterShapes` says; for a bell q is its centre by its bandwidth
/// Shape   1..16 poles in up to 8 sections; a bell has an even number
/// Range   gain linear, above 0; q above 0, its effect limited to a damping of at least 0.0354
/// State   the design; magnitudes are answered from polynomials that are made when first asked for
class AnalogFilterPrototype final : public AnalogFilterPrototypeBase {
public:
    using Shape = FilterShape;

    static constexpr int maxSections = 8;

    struct Polynomial {
        double s2 = 0.0, s1 = 0.0, s0 = 1.0;
    };

    /// (n2 s^2 + n1 s + n0) / (d2 s^2 + d1 s + d0), s = j at the set frequency.
    class BiquadPrototype final : public AnalogFilterPrototypeBase {
    public:
        std::complex<double> getResponse(double frequency) noexcept CINDER_REALTIME override;
        void getMagnitudeSquared(const float* frequencies, float* magnitudes,
                                 int count) noexcept CINDER_REALTIME override;
        double getMagnitudeSquared(double frequency) noexcept CINDER_REALTIME override;
        void setFrequency(double frequency,
                          double inverseFrequency) noexcept CINDER_REALTIME override;

        void setPolynomials(const Polynomial& newNumerator,
                            const Polynomial& newDenominator) noexcept CINDER_REALTIME;
        const Polynomial& getNumerator() const { return numerator; }
        const Polynomial& getDenominator() const { return denominator; }
        bool isFirstOrder() const noexcept CINDER_REALTIME;

    private:
        /// a w^4 + b w^2 + c, the squared magnitude of a polynomial at s = j w / w0 times w0^4, or
        /// w0^2 for one of first order.
        struct Magnitude {
            double a, b, c;
        };
        Magnitude magnitudeOf(const Polynomial& p) const noexcept CINDER_REALTIME;
        void updateMagnitudes() noexcept CINDER_REALTIME;
        double magnitudeAt(double frequency) const noexcept CINDER_REALTIME;

        double centre = 1.0;
        double inverseCentre = 1.0;
        bool magnitudesAreValid = false;
        Magnitude ofNumerator = {};
        Magnitude ofDenominator = {};
        Polynomial numerator;
        Polynomial denominator;
    };

    /// Keeps the frequency. [any]
    void design(Shape shape, int numPoles, double gain, double q) noexcept CINDER_REALTIME;

    std::complex<double> getResponse(double frequency) noexcept CINDER_REALTIME override;
    void getMagnitudeSquared(const float* frequencies, float* magnitudes,
                             int count) noexcept CINDER_REALTIME override;
    double getMagnitudeSquared(double frequency) noexcept CINDER_REALTIME override;
    void setFrequency(double frequency, double inverseFrequency) noexcept CINDER_REALTIME override;

    int getNumSections() const { return numSections; }
    const BiquadPrototype& getSection(int index) const {
        return sections[static_cast<std::size_t>(index)];
    }

private:
    /// Roots of a section's numerator or denominator: a pair of conjugates, or one real root.
    struct Roots {
        std::complex<double> root;
        bool isReal;
    };

    static Polynomial polynomialOf(const Roots& roots) noexcept CINDER_REALTIME;
    void addSection(const Polynomial& numerator,
                    const Polynomial& denominator) noexcept CINDER_REALTIME;
    void addBandPass(const Roots& zeros, const Roots& poles, double q) noexcept CINDER_REALTIME;

    std::array<BiquadPrototype, maxSections> sections;
    int numSections = 0;
};

}  // namespace cinder
