#include "object/records.hpp"

#include "object/record_operations.hpp"

#include <nlohmann/json.hpp>

namespace mk_object {

#define MK_DEFINE_RECORD(T)                                                                                  \
    T::T() { make_cells(*this); }                                                                            \
    T::T(const T&) = default;                                                                                \
    T::~T() = default;                                                                                       \
    void T::pushvalue(lua_State* L) const { push_record(L, *this); }                                         \
    void T::set_value_from_luatable(lua_State* L, int index) { read_record(L, index, *this); }               \
    void T::release_inpool() { pool.erase(pool_key); }                                                       \
    std::pair<std::string, std::string> T::get_key_info(int index) { return key_info(*this, index); }        \
    unsigned int T::get_size() { return present_fields(*this); }                                             \
    mk_Value T::get_value(std::string key) { return field_value(*this, key); }                               \
    void T::set_value(std::string key, mk_Value value) { set_field(*this, key, value); }                     \
    json T::to_json() { return mk_List::to_json(); }

#define MK_RECORD_CLASS(T, lists, help) MK_DEFINE_RECORD(T)
#include "object/record_classes.inc"
MK_DEFINE_RECORD(LINGOMAT_Tracks)

mk_Peak::mk_Peak(const std::shared_ptr<void>& owner, mk_LitsItem_inner<double>* cells) {
    each_field(*this, [&](const auto&, auto& cell) { cell = {owner, cells++}; });
}

} // namespace mk_object
