// Records and arrays of records, by handle, and the functions for any handle.

#include "bindings/python/guarded_call.hpp"
#include "bindings/python/text_output.hpp"
#include "bindings/python/value_pools.hpp"
#include "host_api/arguments.hpp"
#include "object/records.hpp"

#include <string_view>

using namespace python_utility;
using mk_object::mk_List;
using mk_object::mk_Value;

namespace python_api {
namespace {

template <class T>
void py_set_value_inmkObj_main(Handle handle, const char* key, T value) {
    if (mk_List* record = mk_List::find_record(handle))
        record->set_value(text_or_empty(key), mk_Value(std::in_place_type<T>, std::move(value)));
}

template <class T>
T py_get_value_inmkobj_main(Handle handle, const char* key) {
    mk_List* record = mk_List::find_record(handle);
    return record ? value_or_zero<T>(record->get_value(text_or_empty(key))) : T{};
}

} // namespace

Handle py_create_mkList_array() { return guarded(mk_List::create_mklist_array); }

Handle py_create_mkObj_inarray(Handle handle, const char* name) {
    return guarded([&]() -> Handle {
        const std::string_view class_name = text_or_empty(name);
        mk_List* record = nullptr;
#define MK_RECORD_CLASS(T, lists, help)                                                                      \
    if (class_name == #T)                                                                                    \
        record = mk_List::create_mkobj_inarray<mk_object::T>(handle);
#include "object/record_classes.inc"
        return record ? record->pool_key : 0;
    });
}

void* py_get_ptr_inarray(Handle handle, int index) {
    return guarded([&]() -> void* {
        if (void* value = get_value_inarray<void*>(handle, index))
            return value;
        const std::vector<mk_List*>* records = find_object(mk_List::mkList_pool, handle);
        return has_place(records, index) ? (*records)[static_cast<std::size_t>(index)] : nullptr;
    });
}

int py_get_obj_size(Handle handle) {
    return guarded([&] {
        if (const ValueArray* array = find_object(pyvar_array_list, handle))
            return static_cast<int>(array->size());
        if (const ValueMap* map = find_object(pyvar_map_list, handle))
            return static_cast<int>(map->size());
        if (const std::vector<mk_List*>* records = find_object(mk_List::mkList_pool, handle))
            return static_cast<int>(records->size());
        mk_List* record = mk_List::find_record(handle);
        return record ? static_cast<int>(record->get_size()) : 0;
    });
}

void py_release_obj(Handle handle) {
    guarded([&] {
        if (pyvar_array_list.erase(handle) > 0 || pyvar_map_list.erase(handle) > 0 ||
            mk_List::release_mkList(handle))
            return;
        if (mk_List* record = mk_List::find_record(handle))
            record->release_inpool();
    });
}

void py_set_ptr_inmkObj(Handle handle, const char* key, void* value) {
    guarded([&] { py_set_value_inmkObj_main<void*>(handle, key, value); });
}
void py_set_int_inmkObj(Handle handle, const char* key, int value) {
    guarded([&] { py_set_value_inmkObj_main<int>(handle, key, value); });
}
void py_set_double_inmkObj(Handle handle, const char* key, double value) {
    guarded([&] { py_set_value_inmkObj_main<double>(handle, key, value); });
}
void py_set_bool_inmkObj(Handle handle, const char* key, bool value) {
    guarded([&] { py_set_value_inmkObj_main<bool>(handle, key, value); });
}
void py_set_string_inmkObj(Handle handle, const char* key, const char* value) {
    guarded([&] { py_set_value_inmkObj_main<std::string>(handle, key, text_or_empty(value)); });
}

void py_get_key_inmkObj(Handle handle, int index, char* keyOut, char* typeOut) {
    const auto info = guarded([&] {
        mk_List* record = mk_List::find_record(handle);
        return record ? record->get_key_info(index) : std::pair<std::string, std::string>();
    });
    guarded([&] {
        put_text(keyOut, info.first);
        put_text(typeOut, info.second);
    });
}

int py_get_int_inmkobj(Handle handle, const char* key) {
    return guarded([&] { return py_get_value_inmkobj_main<int>(handle, key); });
}
double py_get_double_inmkobj(Handle handle, const char* key) {
    return guarded([&] { return py_get_value_inmkobj_main<double>(handle, key); });
}
bool py_get_bool_inmkobj(Handle handle, const char* key) {
    return guarded([&] { return py_get_value_inmkobj_main<bool>(handle, key); });
}
void py_get_string_inmkobj(Handle handle, const char* key, char* valueOut) {
    guarded([&] { put_text(valueOut, py_get_value_inmkobj_main<std::string>(handle, key)); });
}
void* py_get_ptr_inmkobj(Handle handle, const char* key) {
    return guarded([&] { return py_get_value_inmkobj_main<void*>(handle, key); });
}

} // namespace python_api
