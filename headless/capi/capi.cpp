#include "headless/capi/capi.hpp"

#include "common/path_text.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/report/printable.hpp"
#include "headless/report/remarks.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "headless/workstation/workstation.hpp"

#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace headless::capi {
namespace {

using path_text::path_of;

struct Session {
    workstation::Workstation workstation{functions::all_functions()};
    std::optional<workstation::PluginLibrary> plugin; // after the workstation: destroyed before it
    std::vector<workstation::ScriptFunction> functions;
};

/// Null if none is open. A workstation that is never closed stays until the process ends: when static objects
/// are destroyed, those of the plug-in are already gone.
Session* session = nullptr;
std::deque<Failure> failures;
std::string last_message;

void add_failure(const char* reason) noexcept {
    try {
        failures.push_back({reason});
    } catch (...) { // no memory even for the reason; the caller still gets false
        return;
    }
}

/// Runs `body`. An exception becomes a failure like any other.
template <class Body>
bool succeeds(Body body) noexcept {
    try {
        const Result<void> result = body();
        if (!result)
            failures.push_back(result.error());
        return result.has_value();
    } catch (const std::exception& error) {
        add_failure(error.what());
    } catch (...) {
        add_failure("unknown exception");
    }
    return false;
}

tl::unexpected<Failure> failure(const char* reason) { return tl::unexpected(Failure{reason}); }

Result<void> load(workstation::Workstation& workstation, const char* project_file) {
    if (!project_file)
        return {};
    return rpp::load_project(workstation.project(), path_of(project_file)).map([&] {
        workstation.project().file = jobs::true_path(path_of(project_file));
    });
}

Result<void> save_in_place();

Result<void> open(const char* plugin_file, const char* project_file) {
    if (session)
        return failure("a workstation is open already");
    if (!plugin_file)
        return failure("no plug-in is named");
    auto opened = std::make_unique<Session>();
    auto plugin = workstation::PluginLibrary::load(path_of(plugin_file), opened->workstation);
    if (!plugin)
        return tl::unexpected(plugin.error());
    opened->plugin.emplace(std::move(*plugin));
    opened->functions = opened->workstation.script_functions();
    opened->workstation.save_project = save_in_place;
    return load(opened->workstation, project_file).map([&] { session = opened.release(); });
}

Result<void> save(const char* project_file) {
    if (!session)
        return failure("no workstation is open");
    if (!project_file)
        return failure("no project file is named");
    workstation::Workstation& workstation = session->workstation;
    const std::filesystem::path file = path_of(project_file);
    return jobs::check_project_output(jobs::OutputGuard({}), file, workstation.project().file)
        .and_then([&] { return jobs::save_project_as(workstation, file, jobs::Losses::accept); })
        .map([&](const jobs::SavedProject& saved) {
            if (!saved.backup.empty())
                failures.push_back({report::backup_message(file, saved.backup)});
            failures.insert(failures.end(), saved.losses.begin(), saved.losses.end());
        });
}

/// What a script saves of its own accord.
Result<void> save_in_place() {
    const std::filesystem::path file = session->workstation.project().file;
    return file.empty() ? failure("the project has no file to save it in") : save(file.string().c_str());
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
    last_message = report::printable(failures.front().message);
    failures.pop_front();
    return last_message.c_str();
}

} // namespace
} // namespace headless::capi

bool felspar_open(const char* plugin_file, const char* project_file) {
    return headless::capi::succeeds([&] { return headless::capi::open(plugin_file, project_file); });
}

bool felspar_save(const char* project_file) {
    return headless::capi::succeeds([&] { return headless::capi::save(project_file); });
}

bool felspar_answer(const char* title, const char* answer) {
    return headless::capi::succeeds([&] { return headless::capi::add_answer(title, answer); });
}

bool felspar_function(int index, const char** name, const char** definition,
                      headless::workstation::ScriptCall** call) {
    if (!headless::capi::session || index < 0 ||
        std::cmp_greater_equal(index, headless::capi::session->functions.size()))
        return false;
    const headless::workstation::ScriptFunction& function =
        headless::capi::session->functions[static_cast<std::size_t>(index)];
    *name = function.name.c_str();
    *definition = function.definition;
    *call = function.call;
    return true;
}

const char* felspar_next_failure() {
    const char* message = nullptr;
    headless::capi::succeeds([&]() -> headless::Result<void> {
        message = headless::capi::next_failure();
        return {};
    });
    return message;
}

void felspar_close() {
    headless::capi::succeeds([]() -> headless::Result<void> {
        delete std::exchange(headless::capi::session, nullptr);
        return {};
    });
}
