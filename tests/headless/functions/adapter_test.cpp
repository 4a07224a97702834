#include "headless/functions/adapter.hpp"
#include "headless/functions/all_functions.hpp"
#include "tests/headless/support/failures.hpp"

#include <new>
#include <set>
#include <string_view>

namespace headless {
namespace {

double throw_bad_alloc(const char*) { throw std::bad_alloc(); }

const workstation::HostFunction table[] = {
    {"Throw", functions::host_function<throw_bad_alloc>("text", "Help")}};

TEST(Adapter, ReportsExceptionsByFunctionName) {
    workstation::Workstation workstation{table};
    const auto failure = test::tells("the host function Throw failed: std::bad_alloc");
    EXPECT_EQ(workstation.function_as<double(const char*)>("Throw")("text"), 0.0);
    EXPECT_THAT(workstation.take_failures(), testing::ElementsAre(failure));
    void* argument = nullptr;
    EXPECT_EQ(*static_cast<double*>(workstation.script_functions().at(0).call(&argument, 1)), 0.0);
    EXPECT_THAT(workstation.take_failures(), testing::ElementsAre(failure));
}

TEST(Adapter, RefusesScriptCallsWithTooFewArguments) {
    workstation::Workstation workstation{table};
    EXPECT_EQ(workstation.script_functions().at(0).call(nullptr, 0), nullptr);
    EXPECT_FALSE(workstation.has_failed_call());
}

TEST(AllFunctions, HaveNamesOfTheirOwn) {
    std::set<std::string_view> names;
    for (const workstation::HostFunction& function : functions::all_functions())
        EXPECT_TRUE(names.insert(function.name).second) << function.name;
}

} // namespace
} // namespace headless
