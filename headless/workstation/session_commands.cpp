// Commands for settings of the project, for the window, and for steps that could be undone.

#include "headless/rpp/properties.hpp"
#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/workstation.hpp"

namespace headless::workstation {
namespace {

constexpr rpp::FieldPlace editing_place{"AUTOXFADE", 1};
constexpr unsigned auto_crossfade = 1;
constexpr unsigned trim_behind = 2;

unsigned editing_flags(const project::Project& project) {
    return static_cast<unsigned>(static_cast<int>(rpp::number_of(project, editing_place)));
}

void toggle_auto_crossfade(Workstation& workstation) {
    project::Project& project = workstation.project();
    rpp::set_number(project, editing_place, editing_flags(project) ^ auto_crossfade);
}

void start_trimming(Workstation& workstation) {
    project::Project& project = workstation.project();
    rpp::set_number(project, editing_place, editing_flags(project) | trim_behind);
}

void stop_trimming(Workstation& workstation) {
    project::Project& project = workstation.project();
    rpp::set_number(project, editing_place, editing_flags(project) & ~trim_behind);
}

void report_missing_undo(Workstation& workstation) {
    workstation.report(Failure{"nothing was undone or redone: there is no undo here"});
}

void do_nothing(Workstation&) {} // the window only

constexpr Command commands[] = {
    {40029, report_missing_undo}, {40030, report_missing_undo}, {40041, toggle_auto_crossfade},
    {40441, do_nothing}, // builds the peaks that are drawn
    {40514, do_nothing}, // cursor to the mouse
    {40913, do_nothing}, // scrolls to the selected tracks
    {41110, do_nothing}, // selects the track under the mouse
    {41120, start_trimming},      {41121, stop_trimming},
};

} // namespace

Commands session_commands() { return commands; }

} // namespace headless::workstation
