// The operations that every record has, tried on each class through the interface; and the pools of records
// that wait for scripts: who owns what, and what is left after a release.

#include "object/records.hpp"

#include <gtest/gtest.h>
#include <lua.hpp>
#include <nlohmann/json.hpp>

#include <stdexcept>

namespace {

using namespace mk_object;

using Lua = std::unique_ptr<lua_State, decltype(&lua_close)>;
Lua new_lua() { return {luaL_newstate(), &lua_close}; }

using Column = std::pair<std::string, std::string>; // key and type name
template <class T>
const std::vector<Column> columns;
template <>
const std::vector<Column> columns<TrackDetail>{
    {"Name", "string"}, {"Track", "MediaTrack*"}, {"Volume", "double"}, {"Index", "int"}, {"Depth", "int"}};
template <>
const std::vector<Column> columns<mk_Peak>{{"Time", "double"},    {"MaxPeak", "double"},
                                           {"MinPeak", "double"}, {"Frequency", "double"},
                                           {"Pos", "double"},     {"PointVol", "double"}};
template <>
const std::vector<Column> columns<mk_Midi>{
    {"Index", "int"}, {"Pitch", "int"}, {"Velocity", "int"}, {"StartPos", "double"}, {"EndPos", "double"}};
template <>
const std::vector<Column> columns<LINGOMAT_Tracks>{{"MasterName", "string"},
                                                   {"MasterTrack", "MediaTrack*"},
                                                   {"BaseTrack", "MediaTrack*"},
                                                   {"UniqueTrack", "MediaTrack*"}};

int some_track;
const std::map<std::string, mk_Value> value_of_type{{"string", std::string("guitar")},
                                                    {"MediaTrack*", static_cast<void*>(&some_track)},
                                                    {"double", -3.5},
                                                    {"int", 60}};

template <class T>
class EveryRecord : public ::testing::Test {
protected:
    T object;
    mk_List& record = object;
    Lua L = new_lua();
};
using RecordClasses = ::testing::Types<TrackDetail, mk_Peak, mk_Midi, LINGOMAT_Tracks>;
TYPED_TEST_SUITE(EveryRecord, RecordClasses);

TYPED_TEST(EveryRecord, ReadsZerosWhenNew) {
    EXPECT_EQ(this->record.pool_key, reinterpret_cast<unsigned long long>(&this->record));
    EXPECT_TRUE(this->record.to_json().is_null());
    EXPECT_EQ(this->record.get_value("no such key"), mk_Value(0));
    this->record.set_value("no such key", 1.0);
    for (const auto& [key, type] : columns<TypeParam>) {
        this->record.set_value(key, true); // a value of another type is dropped
        EXPECT_EQ(this->record.get_value(key).index(), value_of_type.at(type).index()) << key;
        EXPECT_NE(this->record.get_value(key), value_of_type.at(type)) << key;
    }
    EXPECT_EQ(this->record.get_size(), 0u);
}

TYPED_TEST(EveryRecord, KeepsItsFieldsThroughALuaTable) {
    const std::vector<Column>& keys = columns<TypeParam>;
    for (auto column = keys.rbegin(); column != keys.rend(); ++column) { // the order is the class's own
        this->record.set_value(column->first, value_of_type.at(column->second));
        EXPECT_EQ(this->record.get_key_info(0), *column);
    }
    ASSERT_EQ(this->record.get_size(), keys.size());
    const int size = static_cast<int>(keys.size());
    EXPECT_THROW(this->record.get_key_info(size), std::out_of_range);
    EXPECT_THROW(this->record.get_key_info(-1), std::out_of_range);

    this->record.pushvalue(this->L.get());
    TypeParam copy;
    copy.set_value_from_luatable(this->L.get(), 1);
    EXPECT_EQ(lua_gettop(this->L.get()), 1);
    for (int i = 0; i < size; ++i) {
        const auto& [key, type] = keys[static_cast<std::size_t>(i)];
        EXPECT_EQ(this->record.get_key_info(i).first, key);
        EXPECT_EQ(this->record.get_value(key), value_of_type.at(type)) << key;
        EXPECT_EQ(copy.get_value(key) == value_of_type.at(type), key != "Track") << "not read from tables";
    }
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
    explicit Foreign(std::vector<const mk_List*>& log) : releases(log) {}
    void pushvalue(lua_State*) const override {}
    void set_value_from_luatable(lua_State*, int) override {}
    void release_inpool() override { releases.push_back(this); }
    std::vector<const mk_List*>& releases;
};

TEST(Pool, ReleasesEntriesInOrder) {
    std::vector<const mk_List*> releases;
    Foreign first(releases), last(releases);
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
    EXPECT_EQ(releases, (std::vector<const mk_List*>{&first, &last}));
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

TEST(Pool, HoldsARecordOnce) {
    auto record = std::make_shared<TrackDetail>();
    mk_List::set_obj_topool(record);
    mk_List::set_obj_topool(record);
    EXPECT_EQ(record.use_count(), 2);
    record->release_inpool();
    EXPECT_TRUE(TrackDetail::pool.empty());
}

TEST(Pool, KeepsAListAlive) {
    std::vector<mk_List*>* array = nullptr;
    {
        std::vector<TrackDetail> list(2);
        list[1].Index->set(7);
        EXPECT_EQ(mk_List::to_mkList_array(list)[1], &list[1]);
        array = mk_List::pool_mkList_array(list);
    }
    EXPECT_EQ(array->at(1)->get_value("Index"), mk_Value(7));
    EXPECT_TRUE(mk_List::release_mkList(reinterpret_cast<unsigned long long>(array)));
    EXPECT_TRUE(TrackDetail::pool.empty());
}

} // namespace
