#pragma once
// The ride reckoned a second time, plainly and slowly: one peak after the other with its state in the open,
// every mean a loop, every call on the envelope a line of text. What the library does is held against this.

#include <cmath>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

namespace mk_test {

struct PlainPeak {
    double time, max_peak, min_peak;
};

struct PlainRecord {
    double pos, level;
    double point_vol = 0.0;
    bool writes = false;
    double value = 0.0;
};

struct PlainScan {
    std::vector<PlainRecord> records;
    double sum = 0.0;
    double loud_count = 0.0;
};

inline PlainScan plain_scan(std::span<const PlainPeak> peaks) {
    PlainScan scan;
    int fill = 0, best_index = 0;
    double best = 100.0, times[11] = {};
    for (const PlainPeak& peak : peaks) {
        fill += 1;
        const double a = std::abs(peak.max_peak), b = std::abs(peak.min_peak);
        const double level = a < b ? a : b;
        if (level < best) {
            best = level;
            best_index = fill;
        }
        times[fill] = peak.time;
        if (fill < 10)
            continue;
        if (best < 50.0) {
            const int index = best_index < 3 ? 3 : best_index > 7 ? 7 : best_index;
            scan.records.push_back({times[index], best});
            scan.sum += best;
            scan.loud_count += 1;
        } else {
            scan.records.push_back({times[5], best});
        }
        fill = 0;
        best = 100.0;
    }
    if (fill >= 6 && best < 50.0) {
        scan.records.push_back({times[5], best});
        scan.sum += best;
    }
    return scan;
}

inline void plain_assign(PlainScan& scan, int ratio_type) {
    const auto mean_below = [&](double limit) {
        double sum = 0, n = 0;
        for (const PlainRecord& record : scan.records)
            if (record.level < limit) {
                sum += record.level;
                n += 1;
            }
        return sum / n;
    };
    const double m1 = scan.sum / scan.loud_count, m2 = mean_below(m1), m3 = mean_below(m2),
                 m4 = mean_below(m3);
    const double f = ratio_type <= 0 ? 0.6 : ratio_type == 1 ? 0.4 : ratio_type == 2 ? 0.2 : 0.0;
    const double target = m3 + f * (m4 - m3), k = 0.115129254;
    for (PlainRecord& record : scan.records) {
        const double level = record.level, p = record.pos;
        record.writes = !(level < m3) || target - level > 0;
        record.value = 1.0;
        if (level < m3) {
            if (record.writes) {
                record.point_vol = -(target - level);
                record.value = std::exp((target - level) * -k);
            }
            continue;
        }
        double ceiling = 0.0;
        if (level < 29.0 && p < 0.1)
            ceiling = 4.0;
        else if (level < 28.0 && p < 0.2)
            ceiling = 4.0;
        else if (level < 26.0 && p >= 0.2)
            ceiling = 2.0;
        if (ceiling > 0.0 && m2 == m2) { // without a second mean: unity
            record.point_vol = level - m2 < ceiling ? level - m2 : ceiling;
            record.value = std::exp(record.point_vol * k);
        }
    }
}

inline std::vector<int> plain_flat(const PlainScan& scan) {
    std::vector<int> flat;
    const auto vol = [&](std::size_t i) { return scan.records[i].point_vol; };
    for (std::size_t i = 1; i + 1 < scan.records.size(); ++i)
        if (std::abs(vol(i) - vol(i - 1)) < 0.5 && std::abs(vol(i) - vol(i + 1)) < 0.5)
            flat.push_back(static_cast<int>(i));
    return flat;
}

/// An envelope under edit that keeps its points in the order of their making and notes each call.
struct PlainEnvelope {
    struct Point {
        double position, value;
        bool operator==(const Point&) const = default;
    };
    std::vector<Point> points;
    std::vector<std::string> calls;

    template <class... A>
    static std::string text(const char* format, A... values) {
        char line[128];
        std::snprintf(line, sizeof line, format, values...);
        return line;
    }
    void set(int id, double position, double value) {
        calls.push_back(text("BR_EnvSetPoint %d %a %a 0 0 0x0p+0", id, position, value));
        if (id == -1)
            points.push_back({position, value});
        else if (id < static_cast<int>(points.size()))
            points[static_cast<std::size_t>(id)] = {position, value};
    }
    void remove(int id) {
        calls.push_back(text("BR_EnvDeletePoint %d", id));
        if (id < static_cast<int>(points.size()))
            points.erase(points.begin() + id);
    }
    int count() {
        calls.push_back("BR_EnvCountPoints");
        return static_cast<int>(points.size());
    }
    Point get(int id) {
        calls.push_back(text("BR_EnvGetPoint %d", id));
        return points[static_cast<std::size_t>(id)];
    }
};

/// The calls on the envelope object, from its making to its commit, and the points that are left.
inline PlainEnvelope plain_ride(std::span<const PlainPeak> peaks, int ratio_type,
                                const std::vector<PlainEnvelope::Point>& existing) {
    PlainEnvelope envelope{existing, {"BR_EnvSetProperties 1 1 1 1 0 0 0", "BR_EnvSortPoints"}};
    for (int id = envelope.count(); id >= 1; --id)
        envelope.remove(id);
    envelope.set(0, 0.0, 1.0);
    PlainScan scan = plain_scan(peaks);
    for (const PlainRecord& record : scan.records)
        envelope.set(-1, record.pos, 1.0);
    plain_assign(scan, ratio_type);
    for (std::size_t i = 0; i < scan.records.size(); ++i)
        if (scan.records[i].writes)
            envelope.set(static_cast<int>(i), scan.records[i].pos, scan.records[i].value);
    const std::vector<int> flat = plain_flat(scan);
    for (auto i = flat.rbegin(); i != flat.rend(); ++i)
        envelope.remove(*i);
    const int n = envelope.count();
    for (int hi = n - 1; n >= 3 && hi >= 2; --hi) {
        const PlainEnvelope::Point high = envelope.get(hi), low = envelope.get(hi - 1);
        const double d_high = std::abs(1.0 - high.value), d_low = std::abs(1.0 - low.value);
        if (high.position == low.position && d_low > d_high)
            envelope.remove(hi);
        else if (high.position == low.position && d_high > d_low)
            envelope.remove(hi - 1);
    }
    envelope.calls.push_back("BR_EnvFree 1");
    return envelope;
}

} // namespace mk_test
