#include "analysis/normal.h"

#include <cmath>
#include <numbers>

namespace kv408 {

double normal_share(double x) {
    return 0.5 * std::erfc(-x / std::numbers::sqrt2);
}

// Formula 26.2.23 of Abramowitz and Stegun, good to 4.5e-4, and Newton's steps from there.
double normal_quantile(double share) {
    if (share > 0.5) {
        return -normal_quantile(1.0 - share);
    }
    const double t = std::sqrt(-2.0 * std::log(share));
    double x = (2.515517 + t * (0.802853 + t * 0.010328)) /
                   (1.0 + t * (1.432788 + t * (0.189269 + t * 0.001308))) -
               t;
    for (int step = 0; step < 3; ++step) {
        const double density =
            std::exp(-x * x / 2.0) * std::numbers::inv_sqrtpi / std::numbers::sqrt2;
        x -= (normal_share(x) - share) / density;
    }
    return x;
}

} // namespace kv408
