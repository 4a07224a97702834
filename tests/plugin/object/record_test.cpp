// The operations that every record has, tried on each class through the interface.

#include "object/records.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <functional>
#include <stdexcept>

namespace {

using namespace mk_object;

struct LuaState {
    lua_State* L = luaL_newstate();
    ~LuaState() { lua_close(L); }
    operator lua_State*() const { return L; }
};

struct Column {
    const char* key;
    const char* type;
    mk_Value value;
};

struct RecordClass {
    const char* name;
    std::function<std::shared_ptr<void>()> make; ///< owns; the interface itself never does
    std::function<mk_List*(void*)> interface;
    std::vector<Column> columns;
};

template <class T>
RecordClass record_class(const char* name, std::vector<Column> columns) {
    return {name, [] { return std::make_shared<T>(); },
            [](void* record) -> mk_List* { return static_cast<T*>(record); }, std::move(columns)};
}

int some_track;

const RecordClass track_detail =
    record_class<TrackDetail>("TrackDetail", {{"Name", "string", std::string("guitar")},
                                              {"Track", "MediaTrack*", static_cast<void*>(&some_track)},
                                              {"Volume", "double", -3.5},
                                              {"Index", "int", 4},
                                              {"Depth", "int", 2}});
const RecordClass peak = record_class<mk_Peak>("mk_Peak", {{"Time", "double", 0.001},
                                                           {"MaxPeak", "double", -6.0},
                                                           {"MinPeak", "double", -7.0},
                                                           {"Frequency", "double", 440.0},
                                                           {"Pos", "double", 0.5},
                                                           {"PointVol", "double", 2.0}});
const RecordClass midi = record_class<mk_Midi>("mk_Midi", {{"Index", "int", 1},
                                                           {"Pitch", "int", 60},
                                                           {"Velocity", "int", 99},
                                                           {"StartPos", "double", 1.5},
                                                           {"EndPos", "double", 2.0}});
const RecordClass tracks = record_class<LINGOMAT_Tracks>(
    "LINGOMAT_Tracks", {{"MasterName", "string", std::string("scene")},
                        {"MasterTrack", "MediaTrack*", static_cast<void*>(&some_track)},
                        {"BaseTrack", "MediaTrack*", static_cast<void*>(&some_track)},
                        {"UniqueTrack", "MediaTrack*", static_cast<void*>(&some_track)}});

class EveryRecord : public ::testing::TestWithParam<RecordClass> {
protected:
    std::shared_ptr<void> owner = GetParam().make();
    mk_List& record = *GetParam().interface(owner.get());
    LuaState L;
};

TEST_P(EveryRecord, is_empty_when_fresh_and_reads_zeros) {
    EXPECT_EQ(record.get_size(), 0u);
    EXPECT_THROW(record.get_key_info(0), std::out_of_range);
    EXPECT_EQ(record.pool_key, reinterpret_cast<unsigned long long>(&record));
    EXPECT_TRUE(record.to_json().is_null());
    record.set_value("volume", 1.0);
    for (const Column& column : GetParam().columns) {
        EXPECT_EQ(record.get_value(column.key).index(), column.value.index()) << column.key;
        EXPECT_NE(record.get_value(column.key), column.value) << column.key;
        record.set_value(column.key, true);
        EXPECT_EQ(record.get_size(), 0u) << "a value of another type is dropped";
    }
    EXPECT_EQ(record.get_value("no such key"), mk_Value(0));
}

TEST_P(EveryRecord, walks_its_present_fields_in_order) {
    for (std::size_t i = GetParam().columns.size(); i-- > 0;) { // set backwards: the order is the class's own
        const Column& column = GetParam().columns[i];
        record.set_value(column.key, column.value);
        EXPECT_EQ(record.get_value(column.key), column.value);
        EXPECT_EQ(record.get_key_info(0), std::pair(std::string(column.key), std::string(column.type)));
    }
    const auto size = static_cast<int>(GetParam().columns.size());
    EXPECT_EQ(record.get_size(), static_cast<unsigned>(size));
    for (int i = 0; i < size; ++i)
        EXPECT_EQ(record.get_key_info(i).first, GetParam().columns[static_cast<std::size_t>(i)].key);
    EXPECT_THROW(record.get_key_info(size), std::out_of_range);
    EXPECT_THROW(record.get_key_info(-1), std::out_of_range);
}

TEST_P(EveryRecord, becomes_a_lua_table_of_its_present_fields_and_back) {
    for (const Column& column : GetParam().columns)
        record.set_value(column.key, column.value);
    record.pushvalue(L);
    EXPECT_EQ(lua_gettop(L), 1);
    const auto copy_owner = GetParam().make();
    mk_List& copy = *GetParam().interface(copy_owner.get());
    copy.set_value_from_luatable(L, 1);
    EXPECT_EQ(lua_gettop(L), 1);
    for (const Column& column : GetParam().columns) {
        const bool is_skipped = column.key == std::string("Track");
        EXPECT_EQ(copy.get_value(column.key) == column.value, !is_skipped) << column.key;
    }
}

INSTANTIATE_TEST_SUITE_P(Records, EveryRecord, ::testing::Values(track_detail, peak, midi, tracks),
                         [](const auto& test) { return test.param.name; });

TEST(Record, shares_its_cells_with_its_copies_but_not_its_key) {
    TrackDetail source;
    TrackDetail copy = source;
    copy.set_value("Volume", 1.0);
    EXPECT_EQ(source.get_value("Volume"), mk_Value(1.0));
    EXPECT_NE(copy.pool_key, source.pool_key);
    TrackDetail assigned;
    assigned = source;
    EXPECT_EQ(assigned.pool_key, reinterpret_cast<unsigned long long>(&assigned));
    EXPECT_EQ(assigned.get_size(), 1u);
}

TEST(Record, takes_the_zero_for_a_value_of_another_lua_type_and_stops_at_a_key_that_is_no_string) {
    LuaState L;
    luaL_dostring(L, "return {Volume = 'loud', Index = 2.5, Other = 1}");
    TrackDetail record;
    record.set_value("Track", static_cast<void*>(nullptr));
    EXPECT_EQ(record.get_key_info(0).first, "Track") << "null, but present";
    record.set_value_from_luatable(L, 1);
    EXPECT_EQ(record.get_size(), 3u);
    EXPECT_EQ(record.get_value("Volume"), mk_Value(0.0));
    luaL_dostring(L, "return {'first in traversal', Depth = 3}");
    TrackDetail unread;
    unread.set_value_from_luatable(L, 2);
    EXPECT_EQ(unread.get_size(), 0u);
    EXPECT_EQ(lua_gettop(L), 2);
}

} // namespace
