// Every function that scripts may call, of the host and registered ones, through the bridge.

#include "headless/script/definition.hpp"
#include "tests/headless/script/script_fixture.hpp"

#include <algorithm>
#include <map>
#include <string>

namespace headless::test {
namespace {

std::string plain_argument(const script::Parameter& parameter) {
    if (parameter.name == "pointer")
        return "item";
    static const std::map<std::string_view, const char*> objects{
        {"MediaTrack*", "track"},
        {"MediaItem*", "item"},
        {"MediaItem_Take*", "take"},
        {"TrackEnvelope*", "envelope"},
        {"BR_Envelope*", "reaper.BR_EnvAlloc(envelope, false)"},
        {"PCM_source*", "reaper.GetMediaItemTake_Source(take)"},
        {"AudioAccessor*", "reaper.CreateTakeAudioAccessor(take)"},
        {"WDL_FastString*", "reaper.SNM_CreateFastString('text')"}};
    static const std::map<script::ValueKind, const char*> values{
        {script::ValueKind::integer, "1"},
        {script::ValueKind::number, "0.5"},
        {script::ValueKind::boolean, "true"},
        {script::ValueKind::text, "'text'"},
        {script::ValueKind::array, "reaper.new_array(100)"}};
    if (const auto object = objects.find(parameter.type); object != objects.end())
        return object->second;
    const auto value = values.find(parameter.kind);
    return value == values.end() ? "nil" : value->second;
}

struct EveryFunction : ScriptTest {
    EveryFunction() { project.item(0)->active_take()->add_envelope("Volume"); }

    std::vector<workstation::ScriptFunction> functions = workstation.script_functions();
};

TEST_F(EveryFunction, AcceptsPlainArguments) {
    EXPECT_TRUE(std::ranges::is_sorted(functions, {}, &workstation::ScriptFunction::name));
    workstation.dialog_answers.add("text", "OK");
    for (const workstation::ScriptFunction& function : functions) {
        std::string arguments;
        std::ptrdiff_t results = 0;
        const script::ParsedDefinition definition = script::parse_definition(function.definition);
        EXPECT_FALSE(definition.help.empty()) << function.name;
        for (const script::Parameter& parameter : definition.parameters) {
            if (parameter.is_argument())
                arguments += (arguments.empty() ? "" : ", ") + plain_argument(parameter);
            results += parameter.is_result() ? 1 : 0;
        }
        results += definition.result == script::ValueKind::nothing ? 0 : 1;
        const auto outcome = run(R"(
            reaper.InsertTrackAtIndex(0, false)
            local track = reaper.GetTrack(0, 0)
            reaper.SetOnlyTrackSelected(track)
            reaper.InsertMedia("line.wav", 0)
            local item = reaper.GetSelectedMediaItem(0, 0)
            local take = reaper.GetActiveTake(item)
            local envelope
            for i = 0, reaper.CountMediaItems(0) - 1 do
                local other = reaper.GetActiveTake(reaper.GetMediaItem(0, i))
                envelope = envelope or other and reaper.GetTakeEnvelopeByName(other, "Volume")
            end
            local count = select("#", reaper.)" +
                                 function.name + "(" + arguments +
                                 "))\nassert(count == " + std::to_string(results) + ", count)");
        EXPECT_EQ(outcome.error, "") << function.definition;
    }
}

TEST_F(EveryFunction, SurvivesAnyArguments) {
    const auto outcome = run(R"(
        local stale = reaper.GetTrack(0, 0)
        local item = reaper.GetMediaItem(0, 0)
        local values = {false, true, -1, 2^53, 0/0, -1/0, 1, 1e308, "", "\xff\0x", ("x"):rep(1 << 20), {},
                        print, io.stdout, coroutine.create(print), reaper.new_array(1), item, stale}
        local functions, calls = {}, 0
        for name, f in pairs(reaper) do
            if name ~= "ShowConsoleMsg" and type(f) == "function" then functions[name] = f end
        end
        reaper.DeleteTrack(stale)
        for name, f in pairs(functions) do
            pcall(f)
            calls = calls + 1
            for _, value in ipairs(values) do
                local v = value
                pcall(f, v, v, v, v, v, v, v, v, v, v, v, v)
                pcall(f, 0, v, v, v, v, v, v, v, v, v, v, v)
                pcall(f, nil, 0, v, v)
                calls = calls + 3
            end
        end
        assert(calls > 9000, calls))",
                             std::size_t{1} << 30U);
    EXPECT_EQ(outcome.error, "");
}

} // namespace
} // namespace headless::test
