#include "headless/rpp/forms.hpp"

#include <algorithm>
#include <optional>

namespace headless::rpp {
namespace {

constexpr Form forms_of_project[] = {
    {"NOTES 0 2"},
    {"RIPPLE 0", true},
    {"GROUPOVERRIDE 0 0 0", true},
    {"AUTOXFADE 1", true},
    {"ENVATTACH 1", true},
    {"POOLEDENVATTACH 0", true},
    {"TCPUIFLAGS 0"},
    {"MIXERUIFLAGS 11 48", true},
    {"PEAKGAIN 1", true},
    {"FEEDBACK 0", true},
    {"PANLAW 1", true},
    {"PROJOFFS 0 0 0", true},
    {"MAXPROJLEN 0 600", true},
    {"GRID 3199 8 1 8 1 0 0 0", true},
    {"TIMEMODE 1 5 -1 24 0 0 -1", true},
    {"VIDEO_CONFIG 0 0 256"},
    {"PANMODE 3", true},
    {"CURSOR 0", true},
    {"ZOOM 100 0 0", true},
    {"VZOOMEX 6 0", true},
    {"USE_REC_CFG 0", true},
    {"RECMODE 1", true},
    {"SMPTESYNC 0 30 100 40 1000 300 0 0 1 0 0"},
    {"LOOP 0", true},
    {"LOOPGRAN 0 4", true},
    {"RECORD_PATH \"\" \"\"", true},
    {"RECORD_CFG"},
    {"APPLYFX_CFG"},
    {"RENDER_FILE \"\"", true},
    {"RENDER_PATTERN \"\"", true},
    {"RENDER_FMT 0 2 0", true},
    {"RENDER_1X 0", true},
    {"RENDER_RANGE 1 0 0 18 1000", true},
    {"RENDER_RESAMPLE 3 0 1", true},
    {"RENDER_ADDTOPROJ 0", true},
    {"RENDER_STEMS 0", true},
    {"RENDER_DITHER 0", true},
    {"RENDER_NORMALIZE 0 0"},
    {"TIMELOCKMODE 1", true},
    {"TEMPOENVLOCKMODE 1", true},
    {"ITEMMIX 0", true},
    {"DEFPITCHMODE 589824 0", true},
    {"TAKELANE 1", true},
    {"SAMPLERATE 48000 0 0", true},
    {"RENDER_CFG"},
    {"RENDER_METADATA"},
    {"LOCK 1", true},
    {"METRONOME 6 2"},
    {"GLOBAL_AUTO -1", true},
    {"TEMPO 120 4 4", true},
    {"PLAYRATE 1 0 0.25 4", true},
    {"SELECTION 0 0", true},
    {"SELECTION2 0 0", true},
    {"MASTERAUTOMODE 0", true},
    {"MASTERTRACKHEIGHT 0 0", true},
    {"MASTERPEAKCOL 16576", true},
    {"MASTERMUTESOLO 0", true},
    {"MASTERTRACKVIEW 0 0.6667 0.5 0.5 0 0 0 0 0 0", true},
    {"MASTERHWOUT 0 0 1 0 0 0 0 -1", true},
    {"MASTER_NCH 2 2", true},
    {"MASTER_VOLUME 1 0 -1 -1 1", true},
    {"MASTER_PANMODE 3"},
    {"MASTER_FX 1", true},
    {"MASTER_SEL 0", true},
    {"MASTERFXLIST"},
    {"MASTERPLAYSPEEDENV"},
    {"TEMPOENVEX"},
    {"MASTERVOLENV"},
    {"MASTERPANENV"},
    {"TITLE \"\""},
    {"AUTHOR \"\""},
    {"GROUP_NAME"},
    {"MARKER"},
    {"PROJBAY"},
    {"TRACK"},
    {"EXTENSIONS"},
    {"EXTSTATE"},
};

constexpr Form forms_of_track[] = {
    {"NAME \"\"", true},
    {"LOCK 0"},
    {"PEAKCOL 16576", true},
    {"BEAT -1", true},
    {"AUTOMODE 0", true},
    {"PANMODE -1"},
    {"PANLAWFLAGS 0"},
    {"WIDTH 1"},
    {"VOLPAN 1 0 -1 -1 1", true},
    {"MUTESOLO 0 0 0", true},
    {"IPHASE 0", true},
    {"PLAYOFFS 0 1", true},
    {"ISBUS 0 0", true},
    {"BUSCOMP 0 0 0 0 0", true},
    {"SHOWINMIX 1 0.6667 0.5 1 0.5 0 0 0", true},
    {"FREEMODE 0", true},
    {"FIXEDLANES 9 0 0 0 0"},
    {"LANESOLO"},
    {"LANEREC"},
    {"LANENAME"},
    {"SEL 0", true},
    {"REC 0 0 1 0 0 0 0 0", true},
    {"AUTO_RECARM 0"},
    {"VU 2", true},
    {"SPACER 0"},
    {"GROUP_FLAGS 0"},
    {"GROUP_FLAGS_HIGH 0"},
    {"TRACKHEIGHT 0 0 0 0 0 0", true},
    {"INQ 0 0 0 0.5 100 0 0 100", true},
    {"NCHAN 2", true},
    {"RECCFG"},
    {"TRACKIMGFN \"\""},
    {"FX 1", true},
    {"TRACKID", true},
    {"PERF 0", true},
    {"LAYOUTS \"\" \"\""},
    {"MIDINOTENAMES"},
    {"EXT"},
    {"AUXRECV"},
    {"MIDIOUT -1", true},
    {"MAINSEND 1 0", true},
    {"MAINSEND_NCH 0"},
    {"HWOUT"},
    {"VOLENV"}, // for the envelopes of all kinds
    {"FXCHAIN"},
    {"FREEZE"},
    {"FXCHAIN_REC"},
    {"ITEM"},
};

constexpr Form forms_of_item[] = {
    {"POSITION 0", true},
    {"SNAPOFFS 0", true},
    {"LENGTH 0", true},
    {"LOOP 0", true},
    {"ALLTAKES 0", true},
    {"COLOR 0"},
    {"BEAT -1"},
    {"IMPLIEDWARP 0"},
    {"YPOS 0 1 0"},
    {"FADEIN 1 0 0 1 0 0 0", true},
    {"FADEOUT 1 0 0 1 0 0 0", true},
    {"MUTE 0 0", true},
    {"SEL 0", true},
    {"FADEFLAG 0"},
    {"MIXFLAG 0"},
    {"FREEZE"},
    {"LOCK 0"},
    {"GROUP 0"},
    {"IGUID", true},
    {"IID 0"},
    {"NOTES"},
    {"RESOURCEFN \"\""},
    {"IMGRESOURCEFLAGS 0"},
    {"NOTESWND"},
    {"EXT"},
};

constexpr Form forms_of_take[] = {
    {"TAKE"},
    {"NAME \"\"", true},
    {"VOLPAN 1 0 1 -1", true},
    {"TAKEVOLPAN 0 1 -1"},
    {"SOFFS 0", true},
    {"PLAYRATE 1 1 0 -1 0 0.0025", true},
    {"CHANMODE 0", true},
    {"TAKECOLOR 0"},
    {"GUID", true},
    {"RECPASS 0"},
    {"EXT"},
    {"TKM"},
    {"SM"},
    {"SOURCE"},
    {"TAKEFX"},
    {"VOLENV"}, // for the envelopes of all kinds
};

constexpr Form forms_of_envelope[] = {
    {"EGUID", true},     {"ACT 1 -1", true},
    {"VIS 1 1 1", true}, {"LANEHEIGHT 0 0", true},
    {"ARM 0", true},     {"DEFSHAPE 0 -1 -1", true},
    {"VOLTYPE 0"},       {"EXT"},
    {"POOLEDENVINST"},   {"PT"},
};

std::optional<std::size_t> rank(Forms forms, std::string_view token) {
    const auto form =
        std::ranges::find(forms, token, [](const Form& known) { return chunk::token(known.line); });
    return form == forms.end() ? std::nullopt : std::optional<std::size_t>(form - forms.begin());
}

std::string_view token_of(const chunk::Node& node) {
    if (!node.place())
        return node.token();
    switch (node.place()->kind) {
    case chunk::ObjectKind::track:
        return "TRACK";
    case chunk::ObjectKind::item:
        return "ITEM";
    case chunk::ObjectKind::marker:
        return "MARKER";
    case chunk::ObjectKind::envelope:
        break;
    }
    return "VOLENV";
}

} // namespace

const Forms project_forms = forms_of_project;
const Forms track_forms = forms_of_track;
const Forms item_forms = forms_of_item;
const Forms take_forms = forms_of_take;
const Forms envelope_forms = forms_of_envelope;

chunk::Lines standard_lines(Forms forms) {
    chunk::Lines lines;
    for (const Form& form : forms)
        if (form.is_standard)
            lines.emplace_back(chunk::Text::literal(form.line));
    return lines;
}

std::string_view default_line(Forms forms, std::string_view token) {
    const auto place = rank(forms, token);
    return place ? forms[*place].line : std::string_view{};
}

std::size_t place_for(const chunk::Lines& lines, Forms forms, std::string_view token) {
    const std::optional<std::size_t> wanted = rank(forms, token);
    std::size_t place = wanted ? 0 : lines.size();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::optional<std::size_t> present = rank(forms, token_of(lines[i]));
        if (present && wanted && *present <= *wanted)
            place = i + 1;
    }
    // The envelopes of a receive stay with it.
    if (place > 0 && lines[place - 1].token() == "AUXRECV")
        while (place < lines.size() && lines[place].place())
            ++place;
    return place;
}

} // namespace headless::rpp
