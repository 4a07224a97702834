#include "headless/report/ride_report.hpp"
#include "headless/report/ride_reporter.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <sstream>

namespace headless {
namespace {

RideReport long_take() {
    return {.file = "in/a\nb.wav",
            .output = "ridden/a_b.wav",
            .length_seconds = 73.34875,
            .windows = 7334,
            .points_written = 7330,
            .points_kept = 4812,
            .largest_cut_db = -7.96,
            .largest_boost_db = 2.0,
            .momentary_max_before_lufs = -20.04,
            .momentary_max_after_lufs = -std::numeric_limits<double>::infinity()};
}

RideReport short_take() {
    return {.file = "caf\xe9.wav", .length_seconds = 0.2, .windows = 20, .largest_cut_db = -0.01};
}

TEST(RideReport, is_a_row_under_its_heading_whose_last_column_is_the_name) {
    EXPECT_EQ(text_heading() + text_row(long_take()) + text_row(short_take()),
              "  length  windows  written    kept     cut   boost   before   after  file\n"
              "       s                              dB      dB     LUFS    LUFS\n"
              "   73.35     7334     7330    4812    -8.0    +2.0    -20.0    -inf  a\\nb.wav\n"
              "    0.20       20        0       0     0.0     0.0        -       -  caf\\xe9.wav\n");
}

TEST(RideReport, is_one_line_of_json_with_null_for_what_has_no_finite_value) {
    const std::string line = json_line(long_take());
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    const auto object = nlohmann::json::parse(line);
    EXPECT_EQ(object.size(), 10U);
    EXPECT_EQ(object["file"], "in/a\nb.wav");
    EXPECT_EQ(object["output"], "ridden/a_b.wav");
    EXPECT_EQ(object["length_seconds"], 73.34875);
    EXPECT_EQ(object["windows"], 7334);
    EXPECT_EQ(object["points_written"], 7330);
    EXPECT_EQ(object["points_kept"], 4812);
    EXPECT_EQ(object["largest_cut_db"], -7.96);
    EXPECT_EQ(object["largest_boost_db"], 2.0);
    EXPECT_EQ(object["momentary_max_before_lufs"], -20.04);
    EXPECT_TRUE(object["momentary_max_after_lufs"].is_null());
}

TEST(RideReport, replaces_bytes_that_are_not_utf8_in_json) {
    EXPECT_EQ(nlohmann::json::parse(json_line(short_take()))["file"], "caf\xef\xbf\xbd.wav");
    EXPECT_EQ(json_failure_line("\xe9", "no \xe9"),
              "{\"file\":\"\xef\xbf\xbd\",\"error\":\"no \xef\xbf\xbd\"}\n");
}

struct Streams {
    std::ostringstream results;
    std::ostringstream failures;
};

bool run_of_two_fails(Streams& streams, ReportForm form) {
    RideReporter reporter(streams.results, streams.failures, form, 2, -1);
    reporter.begin("a.wav");
    reporter.ridden(long_take());
    reporter.begin("b.wav");
    reporter.failed("b.wav", {"b.wav: no\naudio"});
    reporter.finish("ridden", "p.rpp");
    return reporter.anything_failed();
}

TEST(RideReporter, parts_the_table_from_the_failures) {
    Streams streams;
    EXPECT_TRUE(run_of_two_fails(streams, ReportForm::text));
    EXPECT_EQ(streams.results.str(),
              text_heading() + text_row(long_take()) + "\n1 of 2 files ridden into ridden, project p.rpp\n");
    EXPECT_EQ(streams.failures.str(), "felspar: b.wav: no\\naudio\n");
}

TEST(RideReporter, gives_nothing_but_objects_in_json) {
    Streams streams;
    EXPECT_TRUE(run_of_two_fails(streams, ReportForm::json));
    EXPECT_EQ(streams.results.str(), json_line(long_take()) + json_failure_line("b.wav", "b.wav: no\naudio"));
    EXPECT_EQ(streams.failures.str(), "felspar: b.wav: no\\naudio\n");
}

} // namespace
} // namespace headless
