#include "tests/model/critical_reference.h"

#include <cmath>
#include <cstddef>

#include "model/fluid_model.h"

CriticalReference::CriticalReference() {
    long double sum = 0.0L;
    for (std::size_t i = 0; i < fluid::AcceptedMixture().count; ++i) {
        components_.push_back({fluid::AcceptedMixture().z[i],
                               std::sqrt(static_cast<long double>(fluid::a[i][i])), fluid::b[i]});
        sum += components_.back().x;
    }
    for (Component& component : components_) {
        component.x /= sum;
        s_ += component.x * component.s;
        b_ += component.x * component.b;
    }
}

CriticalReference::Terms CriticalReference::terms(long double w) const {
    const long double V = b_ + w;
    long double square = 0.0L, cube = 0.0L, mixed = 0.0L, cubeSize = 0.0L, mixedSize = 0.0L;
    for (const auto& [x, s, b] : components_) {
        const long double t = V * s - b * s_;
        square += x * t * t;
        cube += x * t * t * t;
        cubeSize += x * std::abs(t * t * t);
        mixed += x * b * t;
        mixedSize += x * b * std::abs(t);
    }
    return {V * cube - 3.0L * mixed * square, V * cubeSize + 3.0L * mixedSize * square};
}

long double CriticalReference::condition(long double w) const {
    const Terms at = terms(w);
    return at.value / at.size;
}

long double CriticalReference::temperature(long double w) const {
    const long double V = b_ + w;
    long double square = 0.0L;
    for (const auto& [x, s, b] : components_) {
        const long double t = V * s - b * s_;
        square += x * t * t;
    }
    return 2.0L * square / (fluid::R * V * V * V);
}

double CriticalReference::between(long double low, long double high) const {
    const bool rises = terms(high).value > 0.0L;
    for (int i = 0; i < 80; ++i) {
        const long double middle = 0.5L * (low + high);
        ((terms(middle).value > 0.0L) == rises ? high : low) = middle;
    }
    return static_cast<double>(0.5L * (low + high));
}

long double CriticalReference::nearestToZero(long double low, long double high) const {
    const long double sign = condition(low) > 0.0L ? 1.0L : -1.0L;
    for (int i = 0; i < 60; ++i) {
        constexpr long double goldenSection = 0.618L;
        const long double left = high - goldenSection * (high - low);
        const long double right = low + goldenSection * (high - low);
        if (sign * condition(left) < sign * condition(right)) {
            high = right;
        } else {
            low = left;
        }
    }
    return low;
}

std::vector<double> CriticalReference::roots(double step) const {
    std::vector<double> found;
    const long double ratio = std::exp(static_cast<long double>(step));
    const long double smallest = 1e-10L * b_;
    long double before = condition(smallest);
    long double here = condition(smallest * ratio);
    for (long double w = smallest * ratio; w < 1e3L * b_; w *= ratio) {
        const long double next = condition(w * ratio);
        if (here * next < 0.0L) {
            found.push_back(between(w, w * ratio));
        } else if (before * here > 0.0L && std::abs(here) < std::abs(before) &&
                   std::abs(here) < std::abs(next)) {
            const long double nearest = nearestToZero(w / ratio, w * ratio);
            if (condition(nearest) * here < 0.0L) {
                found.push_back(between(w / ratio, nearest));
                found.push_back(between(nearest, w * ratio));
            }
        }
        before = here;
        here = next;
    }
    return found;
}
