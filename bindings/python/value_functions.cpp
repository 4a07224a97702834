// Arrays and maps of values, by handle.

#include "bindings/python/door.hpp"
#include "bindings/python/value_pools.hpp"

using namespace python_utility;
using python_api::door;
using python_api::Handle;
using python_api::put_text;
using python_api::text_or_empty;

namespace python_api {
namespace {

/// The value at a place in a map; its key goes out.
template <class T>
T py_get_value_inmap(Handle handle, int index, char* keyOut) {
    std::pair<std::string, T> entry = get_value_inmap<T>(handle, index);
    put_text(keyOut, entry.first);
    return entry.second;
}

} // namespace
} // namespace python_api

using python_api::py_get_value_inmap;

MK_PYTHON Handle py_create_array() { return door(create_array_inpool); }
MK_PYTHON Handle py_create_map() { return door(create_map_inpool); }

MK_PYTHON void py_set_array_ptr(Handle handle, void* value) {
    door([&] { set_value_inarray<void*>(handle, value); });
}
MK_PYTHON void py_set_array_int(Handle handle, int value) {
    door([&] { set_value_inarray<int>(handle, value); });
}
MK_PYTHON void py_set_array_double(Handle handle, double value) {
    door([&] { set_value_inarray<double>(handle, value); });
}
MK_PYTHON void py_set_array_bool(Handle handle, bool value) {
    door([&] { set_value_inarray<bool>(handle, value); });
}
MK_PYTHON void py_set_array_string(Handle handle, const char* value) {
    door([&] { set_value_inarray<std::string>(handle, text_or_empty(value)); });
}

MK_PYTHON void py_set_map_ptr(Handle handle, const char* key, void* value) {
    door([&] { set_value_inmap<void*>(handle, text_or_empty(key), value); });
}
MK_PYTHON void py_set_map_int(Handle handle, const char* key, int value) {
    door([&] { set_value_inmap<int>(handle, text_or_empty(key), value); });
}
MK_PYTHON void py_set_map_double(Handle handle, const char* key, double value) {
    door([&] { set_value_inmap<double>(handle, text_or_empty(key), value); });
}
MK_PYTHON void py_set_map_bool(Handle handle, const char* key, bool value) {
    door([&] { set_value_inmap<bool>(handle, text_or_empty(key), value); });
}
MK_PYTHON void py_set_map_string(Handle handle, const char* key, const char* value) {
    door([&] { set_value_inmap<std::string>(handle, text_or_empty(key), text_or_empty(value)); });
}

MK_PYTHON int py_get_int_inarray(Handle handle, int index) { return get_value_inarray<int>(handle, index); }
MK_PYTHON double py_get_double_inarray(Handle handle, int index) {
    return get_value_inarray<double>(handle, index);
}
MK_PYTHON bool py_get_bool_inarray(Handle handle, int index) {
    return get_value_inarray<bool>(handle, index);
}
MK_PYTHON void py_get_string_inarray(Handle handle, int index, char* valueOut) {
    door([&] { put_text(valueOut, get_value_inarray<std::string>(handle, index)); });
}

MK_PYTHON void* py_get_ptr_inmap(Handle handle, int index, char* keyOut) {
    return door([&] { return py_get_value_inmap<void*>(handle, index, keyOut); });
}
MK_PYTHON int py_get_int_inmap(Handle handle, int index, char* keyOut) {
    return door([&] { return py_get_value_inmap<int>(handle, index, keyOut); });
}
MK_PYTHON double py_get_double_inmap(Handle handle, int index, char* keyOut) {
    return door([&] { return py_get_value_inmap<double>(handle, index, keyOut); });
}
MK_PYTHON bool py_get_bool_inmap(Handle handle, int index, char* keyOut) {
    return door([&] { return py_get_value_inmap<bool>(handle, index, keyOut); });
}
MK_PYTHON void py_get_string_inmap(Handle handle, int index, char* keyOut, char* valueOut) {
    door([&] { put_text(valueOut, py_get_value_inmap<std::string>(handle, index, keyOut)); });
}

MK_PYTHON void py_release_obj2(Handle handle) {
    door([&] { release_obj_inpool2(handle); });
}
