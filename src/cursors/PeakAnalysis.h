#pragma once

#include <memory>

// Finds the first significant peak of a sampled curve: one that rises from the valley before it, and falls to
// the valley behind it, by at least a tolerance. Smaller wiggles are replaced by straight lines and so
// ignored.
class PeakAnalysis
{
public:
    // Sums up points for the straight line with the least squared distances in y.
    class StraightLineFit
    {
    public:
        virtual ~StraightLineFit() = default;

        void clear();
        void add(double x, double y);

        // Slope and y at x = 0 of the line; both 0 for fewer than two points or points above one another.
        void line(double &slope, double &intercept) const;

    private:
        int m_pointCount = 0;
        double m_n = 0.0;
        double m_sumX = 0.0;
        double m_sumY = 0.0;
        double m_sumXX = 0.0;
        double m_sumXY = 0.0;
    };

    // Arrays of this many samples or more are refused with std::bad_array_new_length on every platform.
    static constexpr long countLimit = 1L << 28;

    PeakAnalysis() = default;
    virtual ~PeakAnalysis() = default;
    PeakAnalysis(const PeakAnalysis &) = delete;
    PeakAnalysis &operator=(const PeakAnalysis &) = delete;

    // A tenth of the range, or of the smaller one, in the unit of the range.
    static double defaultYToleranceForPowerRange(double range);
    static double defaultYToleranceForPowerRange(double a, double b);

    // Walks count samples from the first (forward) or the last one to the nearest peak and gives the index
    // and the position of its highest sample, the first of equal ones. False, with -1, 0 and 0, when there is
    // none. A NaN ends the walk.
    bool getNextPeak(bool forward, double tolerance, long count, const double *x, const double *y,
                     long &peakIndex, double &peakX, double &peakY);

    // The same walk over the samples that were last loaded: the valleys before and behind the peak, in their
    // order.
    bool getNextPeak(bool forward, double tolerance, long &begin, long &end);

    // Flattens the loaded samples up to the first summit where they stay within the tolerance.
    void prepareSamples(double tolerance);

private:
    struct Bump
    {
        long valley;
        long top;
        long end;
    };
    enum class PassResult { NoPeak, Peak };

    void load(bool forward, long count, const double *x, const double *y);
    PassResult runPass(double tolerance, long &last, bool &settled, Bump &bump);
    long descentEnd(long from, long last) const;
    long climbEnd(long from, long last) const;
    void straighten(long first, long last);

    long m_count = 0;
    long m_capacity = 0;
    std::unique_ptr<double[]> m_xs;
    std::unique_ptr<double[]> m_ys;
    StraightLineFit m_fit;
};
