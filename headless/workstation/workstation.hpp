#pragma once
// The workstation that plug-ins see: one project, its audio, the functions that GetFunc returns, the commands
// behind Main_OnCommandEx, and the names that plug-ins have registered.

#include "common/plugin_abi.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"
#include "headless/workstation/dialogs.hpp"
#include "headless/workstation/fast_strings.hpp"
#include "headless/workstation/script_call.hpp"
#include "headless/workstation/session_state.hpp"
#include "headless/workstation/track_session.hpp"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace headless::audio {
class AudioCache;
class LoudnessCache;
} // namespace headless::audio

namespace headless::workstation {

class EnvelopeObjects;
class ItemClipboard;
struct EnvelopeObject;
class SampleReader;
class SampleReaders;
class SourceHandles;
struct EntryPoints;
struct HostFunction;

/// The changes to the envelope that was written back last.
struct EnvelopeEdit {
    std::size_t points_created = 0;
    std::size_t points_rewritten = 0; ///< writes to existing points, since the last one was created
    std::size_t points_deleted = 0;
    std::size_t points_kept = 0; ///< in the envelope that was written back
};

/// A function as script engines see it (script_call.hpp).
struct ScriptFunction {
    std::string name;
    const char* definition; ///< lives as long as the function is registered
    ScriptCall* call;
    bool is_registered = false; ///< by a plug-in; otherwise the workstation's own
};

/// What a render may do about an existing file of the same name: choose another name, use the file if it is
/// the same byte for byte, or replace it.
enum class ExistingRender { avoid, use_if_same, replace };

/// Strings by section and key.
using ExtensionStates = std::map<std::pair<std::string, std::string>, std::string>;

/// Only one may exist at a time: the C functions that a plug-in gets work on the current one.
class Workstation {
public:
    /// @param functions those that GetFunc and scripts find
    /// @throws std::logic_error if another workstation exists
    explicit Workstation(std::span<const HostFunction> functions);
    ~Workstation();
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    /// Null if there is none.
    static Workstation* current();

    project::Project& project() { return *project_; }
    audio::AudioCache& audio() { return *audio_; }
    audio::LoudnessCache& loudness() { return *loudness_; }

    /// Distance between the windows that are searched for every loudness maximum: 10 ms by default; 400 ms
    /// reads as coarsely as workstations do.
    int loudness_hop_milliseconds = 10;

    /// What GetFunc returns: a host function, otherwise what was registered under "API_" and the name,
    /// otherwise null.
    void* function(const char* name) const;

    /// As `function`, with its C signature: `function_as<bool(MediaItem*,
    /// int)>("MK_SetMediaItemRIDESCRIBER")`.
    template <class Signature>
    Signature* function_as(const char* name) const {
        return reinterpret_cast<Signature*>(function(name));
    }

    /// Every function that scripts may call: those of the host, and those that plug-ins have registered with
    /// a definition and a call. Sorted by name.
    std::vector<ScriptFunction> script_functions() const;

    /// Values that scripts store for one another.
    ExtensionStates extension_states;

    /// What else scripts set and read back.
    SessionState session;
    TrackSession track_session;
    FastStrings fast_strings;

    /// Saves the project under the name that it has. Without it projects cannot be saved by functions.
    std::function<Result<void>()> save_project;

    /// Answers that dialogs use before they ask anyone.
    DialogAnswers dialog_answers;

    /// Inserts an item with one take over everything that can be decoded of the file, named after the file.
    /// Neither cursor nor selection changes.
    /// @returns a failure that names the path if the file is not readable audio
    Result<project::Item*> insert_audio(project::Track& track, const std::filesystem::path& file,
                                        double position_seconds);

    /// Returns the failures of commands and functions since the last call, in order.
    std::vector<Failure> take_failures();

    /// Called at the end of every InsertMedia with the requested file and the new item (the first one that
    /// got a take). The item is null if the file was refused; the reasons are among the failures.
    std::function<void(const std::filesystem::path& file, project::Item* item)> on_insertion;

    EnvelopeEdit last_envelope_edit() const { return last_envelope_edit_; }

    /// Asked about every existing file that a render would have the name of; without it renders avoid them
    /// all. On a failure nothing is rendered.
    std::function<Result<ExistingRender>(const std::filesystem::path& file)> judge_existing_render;

    /// The folder for renders: the project's record path. A relative path is relative to the project file's
    /// folder or, while the project has no file, to the current folder.
    std::filesystem::path render_folder() const;

    static ReaProject* handle(project::Project& project) { return reinterpret_cast<ReaProject*>(&project); }
    static MediaTrack* handle(project::Track& track) { return reinterpret_cast<MediaTrack*>(&track); }
    static MediaItem* handle(project::Item& item) { return reinterpret_cast<MediaItem*>(&item); }
    static MediaItem_Take* handle(project::Take& take) { return reinterpret_cast<MediaItem_Take*>(&take); }
    static TrackEnvelope* handle(project::Envelope& envelope) {
        return reinterpret_cast<TrackEnvelope*>(&envelope);
    }
    static BR_Envelope* handle(EnvelopeObject& object) { return reinterpret_cast<BR_Envelope*>(&object); }
    static AudioAccessor* handle(SampleReader& reader) { return reinterpret_cast<AudioAccessor*>(&reader); }

    static WDL_FastString* handle(FastString& string) { return reinterpret_cast<WDL_FastString*>(&string); }

    /// The object of a handle from outside; null if the handle is null, stale or foreign. A null project is
    /// this one.
    project::Project* live(ReaProject* handle) const;
    project::Track* live(MediaTrack* handle) const;
    project::Item* live(MediaItem* handle) const;
    project::Take* live(MediaItem_Take* handle) const;
    project::Envelope* live(TrackEnvelope* handle) const;
    EnvelopeObject* live(BR_Envelope* handle) const;
    project::Source* live(PCM_source* handle) const;
    SampleReader* live(AudioAccessor* handle) const;
    FastString* live(WDL_FastString* handle) const { return fast_strings.find(handle); }

    /// Whether the handle is valid where a definition text says `type` ("MediaTrack*"), that is, refers to a
    /// live object. Empty for a type that is not a handle type of this host.
    std::optional<bool> is_live(std::string_view type, void* handle) const;

    /// Registers "API_x", "APIdef_x" and "APIvararg_x"; a leading '-' unregisters the name.
    /// @returns false for any other name
    bool register_name(const std::string& name, void* value);

    // For host functions and commands.
    void report(Failure failure);
    /// Reports that the host function with that entry point was ended by an exception.
    void report_exception(const void* entry_point, const char* reason) noexcept;
    /// Records that a host function ended early: its caller may go on with incomplete data.
    void note_failed_call() { has_failed_call_ = true; }
    /// Whether a host function has ended early since failures were last taken.
    bool has_failed_call() const { return has_failed_call_; }
    /// Reports the failure unless one with the same message has been reported this way before.
    void report_once(Failure failure);
    void set_last_envelope_edit(const EnvelopeEdit& edit) { last_envelope_edit_ = edit; }
    /// The number appended to the last render of that name, 0 at first: thousands of lines may share one
    /// name.
    std::size_t& last_render_number(const std::filesystem::path& file) {
        return render_numbers_[file.native()];
    }
    EnvelopeObjects& envelope_objects() { return *envelope_objects_; }
    SourceHandles& source_handles() { return *source_handles_; }
    ItemClipboard& item_clipboard() { return *item_clipboard_; }
    SampleReaders& sample_readers() { return *sample_readers_; }

private:
    /// One of the names of the host function with that entry point.
    std::string_view name_of(const void* entry_point) const;

    std::unique_ptr<project::Project> project_;
    std::unique_ptr<audio::AudioCache> audio_;
    std::unique_ptr<audio::LoudnessCache> loudness_; // reads from the audio
    std::unique_ptr<EnvelopeObjects> envelope_objects_;
    std::unique_ptr<SourceHandles> source_handles_;
    std::unique_ptr<SampleReaders> sample_readers_; // reads from the audio
    std::unique_ptr<ItemClipboard> item_clipboard_;
    std::unordered_map<std::string, EntryPoints> host_functions_;
    std::unordered_map<std::string, void*> registered_;
    std::vector<Failure> failures_;
    bool has_failed_call_ = false;
    std::set<std::string> reported_once_;
    EnvelopeEdit last_envelope_edit_;
    std::unordered_map<std::filesystem::path::string_type, std::size_t> render_numbers_;
};

} // namespace headless::workstation
