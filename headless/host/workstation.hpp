#pragma once
// The workstation that plug-ins see: one project, its audio, the functions that GetFunc answers with, the
// commands behind Main_OnCommandEx, and what plug-ins have registered.

#include "headless/base/failure.hpp"
#include "headless/host/dialogs.hpp"
#include "headless/host/handles.hpp"
#include "headless/host/script_form.hpp"
#include "headless/project/project.hpp"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace headless {

class AudioStore;
class EnvelopeObjects;
struct EnvelopeObject;
class LoudnessReadings;
class SourceHandles;
struct HostFunction;

/// What was done to the envelope that was written back last.
struct EnvelopeEdit {
    std::size_t points_created = 0;
    std::size_t points_rewritten = 0; ///< writes to points that were there, since the last one was created
    std::size_t points_deleted = 0;
    std::size_t points_kept = 0; ///< in the envelope as it was written back
};

/// As script engines see it (script_form.hpp).
struct ScriptFunction {
    std::string name;
    const char* definition; ///< lives as long as the function is registered
    ScriptCall* call;
    bool is_registered = false; ///< by a plug-in, else the workstation's own
};

/// Texts by section and key.
using ExtensionStates = std::map<std::pair<std::string, std::string>, std::string>;

/// One at a time: the C functions that a plug-in gets serve the living one.
class Workstation {
public:
    /// @throws std::logic_error when another one lives
    Workstation();
    ~Workstation();
    Workstation(const Workstation&) = delete;
    Workstation& operator=(const Workstation&) = delete;

    /// Null when none lives.
    static Workstation* current();

    Project& project() { return *project_; }
    AudioStore& audio() { return *audio_; }
    LoudnessReadings& loudness() { return *loudness_; }

    /// Distance of the windows among which every loudness maximum is sought: 10 ms at first; 400 ms reads as
    /// coarsely as workstations do.
    int loudness_hop_milliseconds = 10;

    /// What GetFunc answers: a host function, else what was registered under "API_" and the name, else null.
    void* function(const char* name) const;

    /// The same with its C signature: `function_as<bool(MediaItem*, int)>("MK_SetMediaItemRIDESCRIBER")`.
    template <class Signature>
    Signature* function_as(const char* name) const {
        return reinterpret_cast<Signature*>(function(name));
    }

    /// Every function that scripts may call: those of the host, and those that plug-ins have registered with
    /// a definition and a call. In the order of names.
    std::vector<ScriptFunction> script_functions() const;

    /// What scripts keep for one another.
    ExtensionStates extension_states;

    /// Answers that dialogs find before they ask anybody.
    DialogAnswers dialog_answers;

    /// An item with one take over all that can be decoded of the file, named as the file. Neither cursor
    /// nor selection changes.
    /// @returns a failure that names the path when the file is not readable audio
    Result<Item*> insert_audio(Track& track, const std::filesystem::path& file, double position_seconds);

    /// What commands and functions could not do since this was last asked, in order.
    std::vector<Failure> take_failures();

    /// Called at the end of every InsertMedia with the file asked for and the new item (the first of those
    /// that got a take), which is null when the file was refused; what was reported about it is among the
    /// failures.
    std::function<void(const std::filesystem::path& file, Item* item)> on_insertion;

    EnvelopeEdit last_envelope_edit() const { return last_envelope_edit_; }

    /// Renders replace an existing file only where this says so; without it they look for a free name.
    void allow_replacing(std::function<bool(const std::filesystem::path&)> may_replace);

    /// The folder for renders: the project's record path, seen from the project file's folder (or, while the
    /// project has no file, from the current folder) when it is relative.
    std::filesystem::path render_folder() const;

    static ReaProject* handle(Project& project) { return reinterpret_cast<ReaProject*>(&project); }
    static MediaTrack* handle(Track& track) { return reinterpret_cast<MediaTrack*>(&track); }
    static MediaItem* handle(Item& item) { return reinterpret_cast<MediaItem*>(&item); }
    static MediaItem_Take* handle(Take& take) { return reinterpret_cast<MediaItem_Take*>(&take); }
    static TrackEnvelope* handle(Envelope& envelope) { return reinterpret_cast<TrackEnvelope*>(&envelope); }

    /// The object behind a handle from outside; null for a null, stale or foreign one.
    /// A null project is this one.
    Project* live(ReaProject* handle) const;
    Track* live(MediaTrack* handle) const;
    Item* live(MediaItem* handle) const;
    Take* live(MediaItem_Take* handle) const;
    Envelope* live(TrackEnvelope* handle) const;
    EnvelopeObject* live(BR_Envelope* handle) const;
    const Source* live(PCM_source* handle) const;

    /// Whether the handle may go where a definition text says `type` ("MediaTrack*"): it is that of a living
    /// object. None for a type that is no handle of this host.
    std::optional<bool> is_live(std::string_view type, void* handle) const;

    /// Keeps "API_x", "APIdef_x" and "APIvararg_x"; a leading '-' withdraws the name.
    /// @returns false for any other name
    bool register_name(const std::string& name, void* value);

    // For the functions and commands of this room.
    void report(Failure failure);
    void set_last_envelope_edit(const EnvelopeEdit& edit) { last_envelope_edit_ = edit; }
    bool may_replace(const std::filesystem::path& file) const { return may_replace_ && may_replace_(file); }
    /// The number behind the last render of that name, 0 at first: thousands of lines may share one.
    std::size_t& last_render_number(const std::filesystem::path& file) {
        return render_numbers_[file.native()];
    }
    EnvelopeObjects& envelope_objects() { return *envelope_objects_; }
    SourceHandles& source_handles() { return *source_handles_; }

private:
    std::unique_ptr<Project> project_;
    std::unique_ptr<AudioStore> audio_;
    std::unique_ptr<LoudnessReadings> loudness_; // reads from the audio
    std::unique_ptr<EnvelopeObjects> envelope_objects_;
    std::unique_ptr<SourceHandles> source_handles_;
    std::unordered_map<std::string, HostFunction> host_functions_;
    std::unordered_map<std::string, void*> registered_;
    std::vector<Failure> failures_;
    EnvelopeEdit last_envelope_edit_;
    std::unordered_map<std::string, std::size_t> render_numbers_;
    std::function<bool(const std::filesystem::path&)> may_replace_;
};

} // namespace headless
