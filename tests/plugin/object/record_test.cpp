// The fields of each class of record, the operations that all classes share, and the pools: who owns the records
// that wait for scripts, and what is left after a release.

#include "object/records.hpp"

#include <gtest/gtest.h>
#include <lua.hpp>
#include <nlohmann/json.hpp>

#include <map>
#include <stdexcept>
#include <tuple>

namespace {

using namespace mk_object;

using Lua = std::unique_ptr<lua_State, decltype(&lua_close)>;
Lua new_lua() { return {luaL_newstate(), &lua_close}; }

/// "key type" of each field of a class, as a record that has them all lists them.
template <class T>
std::string fields_of() {
    T record;
    std::apply([&](const auto&... field) { ((record.*field.cell)->set({}), ...); }, T::fields);
    std::string text;
    for (int i = 0; i < static_cast<int>(record.get_size()); ++i) {
        const auto [key, type] = record.get_key_info(i);
        text += key + ' ' + type + ' ';
    }
    return text;
}

TEST(Record, ListsItsFieldsInOrder) {
    EXPECT_EQ(fields_of<TrackDetail>(), "Name string Track MediaTrack* Volume double Index int Depth int ");
    EXPECT_EQ(fields_of<mk_Peak>(), "Time double MaxPeak double MinPeak double Frequency double Pos double "
                                    "PointVol double ");
    EXPECT_EQ(fields_of<mk_Midi>(), "Index int Pitch int Velocity int StartPos double EndPos double ");
    EXPECT_EQ(fields_of<LINGOMAT_Tracks>(), "MasterName string MasterTrack MediaTrack* BaseTrack MediaTrack* "
                                            "UniqueTrack MediaTrack* ");
}

int some_track;
const std::map<std::string, mk_Value> values{{"Name", std::string("guitar")},
                                             {"Track", static_cast<void*>(&some_track)},
                                             {"Volume", -3.5},
                                             {"Index", 60}};

TEST(Record, ReadsZerosWhenNew) {
    TrackDetail record;
    EXPECT_EQ(record.pool_key, reinterpret_cast<unsigned long long>(&record));
    EXPECT_TRUE(record.to_json().is_null());
    EXPECT_EQ(record.get_value("no such key"), mk_Value(0));
    record.set_value("no such key", 1.0);
    EXPECT_EQ(record.get_size(), 0u);
    EXPECT_THROW(record.get_key_info(0), std::out_of_range);
    EXPECT_THROW(record.get_key_info(-1), std::out_of_range);
}

TEST(Record, KeepsItsFieldsThroughALuaTable) {
    const Lua L = new_lua();
    TrackDetail record, copy;
    for (const auto& [key, value] : values)
        record.set_value(key, value);
    record.pushvalue(L.get());
    copy.set_value_from_luatable(L.get(), 1);
    EXPECT_EQ(lua_gettop(L.get()), 1);
    for (const auto& [key, value] : values)
        EXPECT_EQ(record.get_value(key), value) << key;
    EXPECT_EQ(copy.get_size(), 3u) << "a track is not read from tables";
    EXPECT_EQ(copy.get_value("Track"), mk_Value(static_cast<void*>(nullptr)));
    for (const char* key : {"Name", "Volume", "Index"})
        EXPECT_EQ(copy.get_value(key), values.at(key)) << key;
}

TEST(Record, SharesItsCellsWithCopies) {
    TrackDetail source;
    TrackDetail copy = source;
    copy.set_value("Volume", 1.0);
    EXPECT_EQ(source.get_value("Volume"), mk_Value(1.0));
    EXPECT_NE(copy.pool_key, source.pool_key);
    const TrackDetail taker = std::move(copy);
    EXPECT_EQ(copy.get_value("Volume"), mk_Value(1.0)) << "kept"; // NOLINT(bugprone-use-after-move)
    TrackDetail assigned;
    assigned = source;
    EXPECT_EQ(assigned.pool_key, reinterpret_cast<unsigned long long>(&assigned));
    EXPECT_EQ(assigned.get_size(), 1u);
}

TEST(Record, ReadsMistypedLuaValuesAsZero) {
    const Lua L = new_lua();
    luaL_dostring(L.get(), "return {Volume = '1.5', Index = 2.5, Other = 1}, {'no string', Depth = 3}");
    TrackDetail record, unread;
    record.set_value_from_luatable(L.get(), 1);
    EXPECT_EQ(record.get_size(), 2u);
    EXPECT_EQ(record.get_value("Volume"), mk_Value(0.0));
    unread.set_value_from_luatable(L.get(), 2);
    EXPECT_EQ(unread.get_size(), 0u);
    EXPECT_EQ(lua_gettop(L.get()), 2);
    unread.set_value("Track", static_cast<void*>(nullptr));
    EXPECT_EQ(unread.get_key_info(0).first, "Track") << "null, but present";
}

TEST(Pool, OwnsRecordsUntilTheirArrayIsReleased) {
    const auto handle = mk_List::create_mklist_array();
    mk_List* record = mk_List::create_mkobj_inarray<mk_Midi>(handle);
    mk_List::create_mkobj_inarray<TrackDetail>(handle);
    EXPECT_EQ(mk_Midi::pool.at(record->pool_key).use_count(), 1);
    EXPECT_EQ(mk_List::mkList_pool.at(handle)->size(), 2u);
    EXPECT_TRUE(mk_List::release_mkList(handle));
    EXPECT_TRUE(mk_Midi::pool.empty());
    EXPECT_TRUE(TrackDetail::pool.empty());
    EXPECT_FALSE(mk_List::release_mkList(handle));
    EXPECT_EQ(mk_List::create_mkobj_inarray<mk_Midi>(handle), nullptr) << "the array is gone";
}

/// A record of a class from outside, which writes down its releases.
struct Foreign : mk_List {
    void pushvalue(lua_State*) const override {}
    void set_value_from_luatable(lua_State*, int) override {}
    void release_inpool() override { releases.push_back(this); }
    static inline std::vector<const mk_List*> releases;
};

TEST(Pool, ReleasesEntriesInOrder) {
    Foreign first, last;
    auto group = std::make_shared<LINGOMAT_Tracks>();
    LINGOMAT_Tracks::pool.emplace(group->pool_key, group);
    const auto handle = mk_List::create_mklist_array();
    std::vector<mk_List*>& array = *mk_List::mkList_pool.at(handle);
    array.push_back(&first);
    mk_List* gone = mk_List::create_mkobj_inarray<mk_Midi>(handle);
    mk_List::create_mkobj_inarray<mk_Midi>(handle);
    array.push_back(group.get());
    array.push_back(&last);
    std::swap(array[1], array[2]);
    gone->release_inpool(); // by itself
    EXPECT_EQ(array[2], nullptr);
    EXPECT_EQ(mk_Midi::pool.size(), 1u);

    EXPECT_TRUE(mk_List::release_mkList(handle));
    EXPECT_EQ(Foreign::releases, (std::vector<const mk_List*>{&first, &last}));
    EXPECT_TRUE(mk_Midi::pool.empty());
    EXPECT_TRUE(LINGOMAT_Tracks::pool.empty());
}

TEST(Pool, TellsRecordsAtOneAddressApart) {
    const auto old_array = mk_List::create_mklist_array();
    const auto new_array = mk_List::create_mklist_array();
    for (int i = 0; i < 100; ++i) { // the allocator gives the same block again
        mk_List::create_mkobj_inarray<mk_Midi>(old_array)->release_inpool();
        mk_List::create_mkobj_inarray<mk_Midi>(new_array);
    }
    mk_List::release_mkList(old_array);
    EXPECT_EQ(mk_Midi::pool.size(), 100u);
    mk_List::release_mkList(new_array);
    EXPECT_TRUE(mk_Midi::pool.empty());
}

} // namespace
