// What lists cost on their way to Lua, on the headless host: the Lua module's function, its logic function
// alone, and a floor, a bare Lua C function that builds the same table by the same Lua calls out of plain
// values. The three run in turns. `Time` and `_s` are seconds a call; the shares are
//   to_logic_and_floor   module / (logic + floor)
//   rest_to_floor        (module - logic) / floor

#include "api/media/peaks.hpp"
#include "api/project/strings.hpp"
#include "api/track/lists.hpp"
#include "bindings/lua/module.hpp"
#include "entry/entry.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/workstation/workstation.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr std::size_t peak_count = 60'000;
constexpr std::size_t other_count = 10'000;

/// The plug-in entered on a project of 10,000 tracks, the first with a minute of noise.
struct Session {
    Session() {
        for (std::size_t i = 0; i < other_count; ++i)
            workstation.project().insert_track(i);
        constexpr int sample_rate = 8000;
        const auto noise = headless::test::noise(peak_count / 1000 * sample_rate, 1.0);
        const auto file = headless::test::write_sound(folder / "minute.wav", noise, sample_rate);
        headless::project::Track& track = *workstation.project().tracks()[0];
        item = reinterpret_cast<MediaItem*>(workstation.insert_audio(track, file, 0.0).value());
        ReaperPluginEntry(nullptr, &record);
    }
    ~Session() { ReaperPluginEntry(nullptr, nullptr); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    static void* get_func(const char* name) {
        return headless::workstation::Workstation::current()->function(name);
    }

    headless::test::ScratchFolder folder;
    headless::workstation::Workstation workstation{headless::functions::all_functions()};
    reaper_plugin_info_t record{0x20E, nullptr, nullptr, &get_func};
    MediaItem* item = nullptr;
};

struct PlainPeak {
    explicit PlainPeak(const mk_object::mk_Peak& peak)
        : time(peak.Time->value), max_peak(peak.MaxPeak->value), min_peak(peak.MinPeak->value) {}
    double time, max_peak, min_peak;
};

void set_number(lua_State* L, const char* key, double value) {
    lua_pushstring(L, key);
    lua_pushnumber(L, value);
    lua_settable(L, -3);
}

void push(lua_State* L, const PlainPeak& peak) {
    lua_createtable(L, 0, 0);
    set_number(L, "Time", peak.time);
    set_number(L, "MaxPeak", peak.max_peak);
    set_number(L, "MinPeak", peak.min_peak);
}
void push(lua_State* L, const std::string& text) { lua_pushstring(L, text.c_str()); }
void push(lua_State* L, MediaTrack* track) { lua_pushlightuserdata(L, track); }

/// The floor: true, and the table of the plain values behind its upvalue.
template <class Plain>
int push_list(lua_State* L) {
    const auto& values = *static_cast<const std::vector<Plain>*>(lua_touserdata(L, lua_upvalueindex(1)));
    lua_pushboolean(L, true);
    lua_createtable(L, 0, 0);
    lua_Integer key = 0;
    for (const Plain& value : values) {
        lua_pushinteger(L, ++key);
        push(L, value);
        lua_settable(L, -3);
    }
    return 2;
}

constexpr const char* same_tables = R"(
    local function same(a, b)
        if type(a) ~= "table" then return a == b end
        local keys = 0
        for key, value in pairs(a) do
            keys = keys + 1
            if not same(value, b[key]) then return false end
        end
        for _ in pairs(b) do keys = keys - 1 end
        return keys == 0
    end
    return same({module()}, {floor()}))";

/// An interpreter with the module, and with the global functions `module` and `floor` to call.
template <class Plain>
class Interpreter {
public:
    Interpreter(MediaItem* item, const std::string& call, std::vector<Plain> plain)
        : plain_(std::move(plain)) {
        lua_State* L = state_.get();
        luaL_openlibs(L);
        lua_newtable(L);
        lua_setglobal(L, "reaper");
        luaopen_reaper_MERIDEK_FELSPAR(L);
        lua_pushlightuserdata(L, item);
        lua_setglobal(L, "item");
        luaL_loadstring(L, ("return reaper." + call).c_str());
        lua_setglobal(L, "module");
        lua_pushlightuserdata(L, &plain_);
        lua_pushcclosure(L, &push_list<Plain>, 1);
        lua_setglobal(L, "floor");
    }

    bool gives_same_tables() {
        luaL_dostring(state_.get(), same_tables);
        return lua_toboolean(state_.get(), -1);
    }

    void call(const char* global) {
        lua_settop(state_.get(), 0);
        lua_getglobal(state_.get(), global);
        lua_call(state_.get(), 0, 2);
    }

    void collect_garbage() {
        lua_settop(state_.get(), 0);
        lua_gc(state_.get(), LUA_GCCOLLECT, 0);
    }

private:
    std::vector<Plain> plain_;
    std::unique_ptr<lua_State, decltype(&lua_close)> state_{luaL_newstate(), &lua_close};
};

template <class Call>
double seconds_of(Call call) {
    const auto begin = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// @param call   the module's function with its arguments, as Lua reads it
/// @param logic  gives the list that the module's function asks for
template <class Plain, class Logic>
void compare(benchmark::State& state, MediaItem* item, const std::string& call, Logic logic) {
    const auto list = logic();
    Interpreter<Plain> lua(item, call, std::vector<Plain>(list.begin(), list.end()));
    if (!lua.gives_same_tables())
        return state.SkipWithError("module and floor give different tables");
    double module = 0.0, logic_alone = 0.0, floor = 0.0;
    for (auto _ : state) {
        lua.collect_garbage();
        logic_alone += seconds_of([&] { benchmark::DoNotOptimize(logic().data()); });
        floor += seconds_of([&] { lua.call("floor"); });
        lua.collect_garbage();
        const double seconds = seconds_of([&] { lua.call("module"); });
        state.SetIterationTime(seconds);
        module += seconds;
    }
    const auto calls = static_cast<double>(state.iterations());
    state.counters["logic_s"] = logic_alone / calls;
    state.counters["floor_s"] = floor / calls;
    state.counters["to_logic_and_floor"] = module / (logic_alone + floor);
    state.counters["rest_to_floor"] = (module - logic_alone) / floor;
}

void peaks_of_a_minute(benchmark::State& state) {
    const Session session;
    compare<PlainPeak>(state, session.item, "MK_GetMediaItemPeakList(item)", [&] {
        std::vector<mk_object::mk_Peak> peaks;
        MK_FELSPAR::GetMediaItemPeakList(session.item, peaks);
        return peaks;
    });
}

void strings(benchmark::State& state) {
    const Session session;
    std::string text;
    for (std::size_t i = 0; i < other_count; ++i)
        text.append("line_").append(std::to_string(i)).append(i + 1 < other_count ? "," : "");
    compare<std::string>(state, nullptr, "MK_GetStringSplitList('" + text + "', ',')", [&] {
        std::vector<std::string> parts;
        MK_FELSPAR::GetStringSplitList(text, ",", parts);
        return parts;
    });
}

void tracks(benchmark::State& state) {
    const Session session;
    compare<MediaTrack*>(state, nullptr, "MK_GetTrackItemList()", [] {
        std::vector<MediaTrack*> list;
        MK_FELSPAR::GetTrackItemList(nullptr, list);
        return list;
    });
}

BENCHMARK(peaks_of_a_minute)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(strings)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(tracks)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
