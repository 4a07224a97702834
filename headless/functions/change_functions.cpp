// Host functions about changes to the project: whether there are any, saving and undoing them, and the texts that
// scripts keep in it.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/rpp.hpp"

#include <functional>
#include <numeric>
#include <string>

namespace headless::functions {
namespace {

using project::ExtensionData;

std::string text_of(project::Project& project) {
    return rpp::project_text(project, project.file.parent_path());
}

/// Counts by what would be saved, so that whatever changes the project is counted, and nothing else.
int count_changes(Workstation& workstation, project::Project& project) {
    workstation::SessionState& session = workstation.session;
    const std::size_t hash = std::hash<std::string>()(text_of(project));
    if (session.change_count == 0 || hash != session.hash_at_last_count)
        ++session.change_count;
    session.hash_at_last_count = hash;
    return session.change_count;
}

/// Compares with what reading the file again would give; a project without a file, with an empty one.
bool differs_from_its_file(project::Project& project) {
    project::Project saved;
    std::error_code error;
    if (!project.file.empty() && std::filesystem::exists(project.file, error)) {
        if (!rpp::load_project(saved, project.file))
            return true;
        saved.file = project.file;
    } else {
        saved.file = project.file;
        saved.record_path = project.record_path;
    }
    return text_of(saved) != text_of(project);
}

int is_dirty(Workstation& workstation, project::Project& project) {
    return workstation.session.is_marked_dirty || differs_from_its_file(project) ? 1 : 0;
}

void mark_dirty(Workstation& workstation, const project::Project&) {
    workstation.session.is_marked_dirty = true;
}

void save(Workstation& workstation, const project::Project&, bool) {
    const Result<void> saved =
        workstation.save_project ? workstation.save_project()
                                 : tl::unexpected(Failure{"the project cannot be saved by a function here"});
    if (saved)
        workstation.session.is_marked_dirty = false;
    else
        workstation.report(saved.error());
}

template <class... A>
void note_undo_point(A...) {}

const char* get_step(const project::Project&) { return nullptr; }

int take_step(Workstation& workstation, const project::Project&) {
    workstation.report_once({"nothing can be undone or redone here"});
    return 0;
}

int size_of(const ExtensionData::Section* section) {
    if (!section)
        return 0;
    return std::accumulate(section->entries.begin(), section->entries.end(), 0,
                           [](int sum, const ExtensionData::Entry& entry) {
                               return sum + static_cast<int>(entry.key.size() + entry.value.size());
                           });
}

int set_text(project::Project& project, const char* script, const char* key, const char* value) {
    const std::string name = workstation::to_string(script);
    const std::string text = workstation::to_string(value);
    if (!key || !*key)
        project.extension_data.erase(name);
    else if (text.empty())
        project.extension_data.erase(name, key);
    else
        project.extension_data.set(name, key, text);
    return size_of(project.extension_data.section(name));
}

int get_text(const project::Project& project, const char* script, const char* key, char* text,
             int text_size) {
    const std::string* value =
        project.extension_data.value(workstation::to_string(script), workstation::to_string(key));
    workstation::copy_text(value ? *value : "", text, text_size);
    return value ? 1 : 0;
}

bool enumerate_texts(const project::Project& project, const char* script, int index, char* key, int key_size,
                     char* value, int value_size) {
    const ExtensionData::Section* section = project.extension_data.section(workstation::to_string(script));
    const auto place = static_cast<std::size_t>(index); // past the end if the index is negative
    const bool is_there = section && place < section->entries.size();
    workstation::copy_text(is_there ? section->entries[place].key : "", key, key_size);
    workstation::copy_text(is_there ? section->entries[place].value : "", value, value_size);
    return is_there;
}

} // namespace

std::span<const workstation::HostFunction> change_functions() {
    constexpr const char* no_undo = "There is no undo here: does nothing";
    static const workstation::HostFunction table[] = {
        {"GetProjectStateChangeCount",
         host_function<count_changes>("proj", "A number that differs after every change to the project")},
        {"IsProjectDirty",
         host_function<is_dirty>("proj", "1 if the project differs from its file, or was marked")},
        {"MarkProjectDirty", host_function<mark_dirty>("proj", "Marks the project as one that needs saving")},
        {"Main_SaveProject",
         host_function<save>("proj,forceSaveAsInOptional", "Saves the project under the name that it has")},
        {"Undo_OnStateChange", host_function<note_undo_point<const char*>>("descchange", no_undo)},
        {"Undo_OnStateChange2",
         host_function<note_undo_point<ReaProject*, const char*>>("proj,descchange", no_undo)},
        {"Undo_OnStateChange_Item",
         host_function<note_undo_point<ReaProject*, const char*, const project::Item&>>("proj,name,item",
                                                                                        no_undo)},
        {"Undo_OnStateChangeEx",
         host_function<note_undo_point<const char*, int, int>>("descchange,whichStates,trackparm", no_undo)},
        {"Undo_OnStateChangeEx2", host_function<note_undo_point<ReaProject*, const char*, int, int>>(
                                      "proj,descchange,whichStates,trackparm", no_undo)},
        {"Undo_CanUndo2", host_function<get_step>("proj", "There is no undo here: nil")},
        {"Undo_CanRedo2", host_function<get_step>("proj", "There is no undo here: nil")},
        {"Undo_DoUndo2", host_function<take_step>("proj", "There is no undo here: 0, which is reported")},
        {"Undo_DoRedo2", host_function<take_step>("proj", "There is no undo here: 0, which is reported")},
        {"SetProjExtState",
         host_function<set_text>(
             "proj,extname,key,value",
             "Keeps a text in the project; an empty one, or an empty key, deletes. The size "
             "of what is kept under that name")},
        {"GetProjExtState", host_function<get_text>("proj,extname,key,valOutNeedBig,valOutNeedBig_sz",
                                                    "1 and a text that is kept in the project, otherwise 0")},
        {"EnumProjExtState", host_function<enumerate_texts>(
                                 "proj,extname,idx,keyOutOptional,keyOutOptional_sz,valOutOptionalNeedBig,"
                                 "valOutOptionalNeedBig_sz",
                                 "Key and text of that index, counted from 0; false past the end")},
    };
    return table;
}

} // namespace headless::functions
