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
    double time;
    double max_peak;
    double min_peak;
};

struct PlainRecord {
    double pos;
    double level;
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
    int fill = 0;
    double best = 100.0;
    int best_index = 0;
    double times[11] = {};
    for (const PlainPeak& peak : peaks) {
        fill += 1;
        const double a = std::abs(peak.max_peak);
        const double b = std::abs(peak.min_peak);
        const double level = a < b ? a : b;
        if (level < best) {
            best = level;
            best_index = fill;
        }
        times[fill] = peak.time;
        if (fill == 10 && best < 50.0) {
            int index = best_index;
            if (index < 3)
                index = 3;
            if (index > 7)
                index = 7;
            scan.records.push_back({times[index], best});
            scan.sum += best;
            scan.loud_count += 1;
        } else if (fill == 10) {
            scan.records.push_back({times[5], best});
        }
        if (fill == 10) {
            fill = 0;
            best = 100.0;
        }
    }
    if (fill >= 6 && best < 50.0) {
        scan.records.push_back({times[5], best});
        scan.sum += best;
    }
    return scan;
}

struct PlainLadder {
    double m1, m2, m3, m4, target;
};

inline PlainLadder plain_ladder(const PlainScan& scan, int ratio_type) {
    const auto mean = [&](double limit) {
        double sum = 0;
        double n = 0;
        for (const PlainRecord& record : scan.records)
            if (record.level < limit) {
                sum += record.level;
                n += 1;
            }
        return sum / n;
    };
    PlainLadder ladder{};
    ladder.m1 = scan.sum / scan.loud_count;
    ladder.m2 = mean(ladder.m1);
    ladder.m3 = mean(ladder.m2);
    ladder.m4 = mean(ladder.m3);
    double f = 0.0;
    if (ratio_type <= 0)
        f = 0.6;
    if (ratio_type == 1)
        f = 0.4;
    if (ratio_type == 2)
        f = 0.2;
    ladder.target = ladder.m3 + f * (ladder.m4 - ladder.m3);
    return ladder;
}

inline void plain_assign(PlainScan& scan, const PlainLadder& ladder) {
    for (PlainRecord& record : scan.records) {
        const double level = record.level;
        const double p = record.pos;
        const double k = 0.115129254;
        double ceiling = 0.0;
        if (level < ladder.m3 && ladder.target - level > 0) {
            record.point_vol = -(ladder.target - level);
            record.writes = true;
            record.value = std::exp((ladder.target - level) * -k);
            continue;
        }
        if (level < ladder.m3)
            continue;
        if (level < 29.0 && p < 0.1)
            ceiling = 4.0;
        else if (level < 28.0 && p < 0.2)
            ceiling = 4.0;
        else if (level < 26.0 && p >= 0.2)
            ceiling = 2.0;
        record.writes = true;
        record.value = 1.0;
        if (ceiling > 0.0 && ladder.m2 == ladder.m2) { // no second mean: unity
            const double x = level - ladder.m2 < ceiling ? level - ladder.m2 : ceiling;
            record.point_vol = x;
            record.value = std::exp(x * k);
        }
    }
}

inline std::vector<int> plain_flat(const PlainScan& scan) {
    std::vector<int> flat;
    const int n = static_cast<int>(scan.records.size());
    for (int i = 1; i < n - 1; ++i) {
        const auto vol = [&](int j) { return scan.records[static_cast<std::size_t>(j)].point_vol; };
        if (std::abs(vol(i) - vol(i - 1)) < 0.5 && std::abs(vol(i) - vol(i + 1)) < 0.5)
            flat.push_back(i);
    }
    return flat;
}

/// An envelope under edit that keeps its points in the order of their making and notes each call.
class PlainEnvelope {
public:
    struct Point {
        double position;
        double value;
        bool operator==(const Point&) const = default;
    };
    std::vector<Point> points;
    std::vector<std::string> calls;

    void set(int id, double position, double value) {
        note("set %d %a %a", id, position, value);
        if (id == -1)
            points.push_back({position, value});
        else if (id < static_cast<int>(points.size()))
            points[static_cast<std::size_t>(id)] = {position, value};
    }
    void remove(int id) {
        note("delete %d", id);
        if (id < static_cast<int>(points.size()))
            points.erase(points.begin() + id);
    }
    int count() {
        note("count");
        return static_cast<int>(points.size());
    }
    Point get(int id) {
        note("get %d", id);
        return points[static_cast<std::size_t>(id)];
    }
    template <class... A>
    void note(const char* format, A... values) {
        char line[128];
        std::snprintf(line, sizeof line, format, values...);
        calls.emplace_back(line);
    }
};

/// The calls on the envelope object, from its making to its commit, and the points that are left.
inline PlainEnvelope plain_ride(std::span<const PlainPeak> peaks, int ratio_type,
                                const std::vector<PlainEnvelope::Point>& existing) {
    PlainEnvelope envelope;
    envelope.points = existing;
    envelope.note("properties active visible");
    envelope.note("sort");
    for (int id = envelope.count(); id >= 1; --id)
        envelope.remove(id);
    envelope.set(0, 0.0, 1.0);
    PlainScan scan = plain_scan(peaks);
    for (const PlainRecord& record : scan.records)
        envelope.set(-1, record.pos, 1.0);
    plain_assign(scan, plain_ladder(scan, ratio_type));
    for (std::size_t i = 0; i < scan.records.size(); ++i)
        if (scan.records[i].writes)
            envelope.set(static_cast<int>(i), scan.records[i].pos, scan.records[i].value);
    const std::vector<int> flat = plain_flat(scan);
    for (auto i = flat.rbegin(); i != flat.rend(); ++i)
        envelope.remove(*i);
    const int n = envelope.count();
    for (int hi = n - 1; n >= 3 && hi >= 2; --hi) {
        const PlainEnvelope::Point high = envelope.get(hi);
        const PlainEnvelope::Point low = envelope.get(hi - 1);
        const double d_high = std::abs(1.0 - high.value);
        const double d_low = std::abs(1.0 - low.value);
        if (high.position == low.position && d_low > d_high)
            envelope.remove(hi);
        else if (high.position == low.position && d_high > d_low)
            envelope.remove(hi - 1);
    }
    envelope.note("free 1");
    return envelope;
}

} // namespace mk_test
