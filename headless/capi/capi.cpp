#include "headless/capi/capi.hpp"

#include "headless/host/plugin_library.hpp"
#include "headless/host/workstation.hpp"
#include "headless/output/output_guard.hpp"
#include "headless/output/project_output.hpp"
#include "headless/report/printable.hpp"
#include "headless/rpp/rpp.hpp"

#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace headless {
namespace {

struct Session {
    Workstation workstation;
    std::optional<PluginLibrary> plugin; // behind the workstation: leaves before it goes
    std::vector<ScriptFunction> functions;
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
    opened->functions = opened->workstation.script_functions();
    return load(opened->workstation, project_file).map([&] { session = std::move(opened); });
}

Result<void> save(const char* project_file) {
    if (!session)
        return failure("no workstation is open");
    if (!project_file)
        return failure("no project file is named");
    Workstation& workstation = session->workstation;
    return check_project_output(OutputGuard({}), project_file, workstation.project().file)
        .and_then([&] { return keep_foreign_original(project_file); })
        .and_then([&](const std::string& kept) {
            if (!kept.empty())
                failures.push_back({kept});
            return save_project_as(workstation, project_file);
        })
        .map([](std::vector<Failure> losses) {
            failures.insert(failures.end(), losses.begin(), losses.end());
        });
}

Result<void> add_answer(const char* title, const char* answer) {
    if (!session)
        return failure("no workstation is open");
    if (!title || !answer)
        return failure("a dialog's title or answer is missing");
    session->workstation.dialog_answers.add(title, answer);
    return {};
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

bool felspar_answer(const char* title, const char* answer) {
    return headless::succeeds([&] { return headless::add_answer(title, answer); });
}

bool felspar_function(int index, const char** name, const char** definition, headless::ScriptCall** call) {
    if (!headless::session || index < 0 || std::cmp_greater_equal(index, headless::session->functions.size()))
        return false;
    const headless::ScriptFunction& function = headless::session->functions[static_cast<std::size_t>(index)];
    *name = function.name.c_str();
    *definition = function.definition;
    *call = function.call;
    return true;
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
