#include "headless/capi/capi.hpp"

#include "headless/cli/output_guard.hpp"
#include "headless/cli/project_output.hpp"
#include "headless/host/plugin_library.hpp"
#include "headless/host/workstation.hpp"
#include "headless/report/printable.hpp"
#include "headless/rpp/rpp.hpp"

#include <deque>
#include <exception>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace headless {
namespace {

namespace fs = std::filesystem;

struct Session {
    Workstation workstation;
    std::optional<PluginLibrary> plugin; // behind the workstation: leaves before it goes
};

std::unique_ptr<Session> session;
std::deque<Failure> failures;
std::string told;

void remember(const char* reason) noexcept {
    try {
        failures.push_back({reason});
    } catch (...) { // no memory even for the reason: the caller still learns that it failed
        return;
    }
}

/// Runs `body`; what it throws is a failure like others.
template <class Body>
bool succeeds(Body body) noexcept {
    try {
        const Result<void> result = body();
        if (!result)
            failures.push_back(result.error());
        return result.has_value();
    } catch (const std::exception& error) {
        remember(error.what());
    } catch (...) {
        remember("unknown exception");
    }
    return false;
}

tl::unexpected<Failure> failure(const char* reason) { return tl::unexpected(Failure{reason}); }

Result<void> load(Workstation& workstation, const char* project_file) {
    if (!project_file)
        return {};
    return load_project(workstation.project(), project_file).map([&] {
        workstation.project().file = with_true_folder(project_file);
    });
}

Result<void> open(const char* plugin_file, const char* project_file) {
    if (session)
        return failure("a workstation is open already");
    if (!plugin_file)
        return failure("no plug-in is named");
    auto opened = std::make_unique<Session>();
    auto plugin = PluginLibrary::load(plugin_file, opened->workstation);
    if (!plugin)
        return tl::unexpected(plugin.error());
    opened->plugin.emplace(std::move(*plugin));
    return load(opened->workstation, project_file).map([&] { session = std::move(opened); });
}

Result<void> save(const char* project_file) {
    if (!session)
        return failure("no workstation is open");
    if (!project_file)
        return failure("no project file is named");
    return OutputGuard({}).permits_project(project_file).and_then([&] {
        return save_project_as(session->workstation, project_file).map([](std::vector<Failure> losses) {
            failures.insert(failures.end(), losses.begin(), losses.end());
        });
    });
}

const char* next_failure() {
    if (session)
        for (Failure& reported : session->workstation.take_failures())
            failures.push_back(std::move(reported));
    if (failures.empty())
        return nullptr;
    told = printable(failures.front().message);
    failures.pop_front();
    return told.c_str();
}

} // namespace
} // namespace headless

bool felspar_open(const char* plugin_file, const char* project_file) {
    return headless::succeeds([&] { return headless::open(plugin_file, project_file); });
}

bool felspar_save(const char* project_file) {
    return headless::succeeds([&] { return headless::save(project_file); });
}

void* felspar_function(const char* name) {
    void* address = nullptr;
    headless::succeeds([&]() -> headless::Result<void> {
        address = headless::session ? headless::session->workstation.function(name) : nullptr;
        return {};
    });
    return address;
}

const char* felspar_next_failure() {
    const char* message = nullptr;
    headless::succeeds([&]() -> headless::Result<void> {
        message = headless::next_failure();
        return {};
    });
    return message;
}

void felspar_close() {
    headless::succeeds([]() -> headless::Result<void> {
        headless::session.reset();
        return {};
    });
}
