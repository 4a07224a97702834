// Arrays and records that wait for scripts: who owns what, and what is left after a release.

#include "object/records.hpp"

#include <gtest/gtest.h>

namespace {

using namespace mk_object;

TEST(Pool, owns_the_records_of_an_array_until_its_release) {
    const auto handle = mk_List::create_mklist_array();
    mk_List* record = mk_List::create_mkobj_inarray<mk_Midi>(handle);
    mk_List::create_mkobj_inarray<TrackDetail>(handle);
    ASSERT_TRUE(record);
    record->set_value("Pitch", 60);
    EXPECT_EQ(mk_Midi::pool.at(record->pool_key).use_count(), 1);
    EXPECT_EQ(mk_List::mkList_pool.at(handle)->size(), 2u);
    EXPECT_TRUE(mk_List::release_mkList(handle));
    EXPECT_TRUE(mk_Midi::pool.empty());
    EXPECT_TRUE(TrackDetail::pool.empty());
    EXPECT_FALSE(mk_List::release_mkList(handle));
}

TEST(Pool, gives_null_for_an_array_that_is_not_there) {
    EXPECT_EQ(mk_List::create_mkobj_inarray<mk_Peak>(12345), nullptr);
    EXPECT_TRUE(mk_Peak::pool.empty());
}

TEST(Pool, holds_a_record_once_however_often_it_is_put_in) {
    auto record = std::make_shared<TrackDetail>();
    mk_List::set_obj_topool(record);
    mk_List::set_obj_topool(record);
    EXPECT_EQ(TrackDetail::pool.size(), 1u);
    EXPECT_EQ(record.use_count(), 2);
    record->release_inpool();
    EXPECT_TRUE(TrackDetail::pool.empty());
}

TEST(Pool, keeps_a_list_alive_beyond_its_source) {
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

TEST(Pool, has_a_handle_for_an_empty_list) {
    std::vector<mk_Peak> none;
    const auto* array = mk_List::pool_mkList_array(none);
    EXPECT_TRUE(array->empty());
    EXPECT_TRUE(mk_List::release_mkList(reinterpret_cast<unsigned long long>(array)));
}

} // namespace
