// Arrays and maps of values, by handle.

#include "bindings/python/guarded_call.hpp"
#include "bindings/python/text_output.hpp"
#include "bindings/python/value_pools.hpp"
#include "host_api/arguments.hpp"

using namespace python_utility;

namespace python_api {
namespace {

/// Returns the value at an index in a map and writes its key to the output.
template <class T>
T py_get_value_inmap(Handle handle, int index, char* keyOut) {
    std::pair<std::string, T> entry = get_value_inmap<T>(handle, index);
    put_text(keyOut, entry.first);
    return entry.second;
}

} // namespace

Handle py_create_array() { return guarded(create_array_inpool); }
Handle py_create_map() { return guarded(create_map_inpool); }

void py_set_array_ptr(Handle handle, void* value) {
    guarded([&] { set_value_inarray<void*>(handle, value); });
}
void py_set_array_int(Handle handle, int value) {
    guarded([&] { set_value_inarray<int>(handle, value); });
}
void py_set_array_double(Handle handle, double value) {
    guarded([&] { set_value_inarray<double>(handle, value); });
}
void py_set_array_bool(Handle handle, bool value) {
    guarded([&] { set_value_inarray<bool>(handle, value); });
}
void py_set_array_string(Handle handle, const char* value) {
    guarded([&] { set_value_inarray<std::string>(handle, text_or_empty(value)); });
}

void py_set_map_ptr(Handle handle, const char* key, void* value) {
    guarded([&] { set_value_inmap<void*>(handle, text_or_empty(key), value); });
}
void py_set_map_int(Handle handle, const char* key, int value) {
    guarded([&] { set_value_inmap<int>(handle, text_or_empty(key), value); });
}
void py_set_map_double(Handle handle, const char* key, double value) {
    guarded([&] { set_value_inmap<double>(handle, text_or_empty(key), value); });
}
void py_set_map_bool(Handle handle, const char* key, bool value) {
    guarded([&] { set_value_inmap<bool>(handle, text_or_empty(key), value); });
}
void py_set_map_string(Handle handle, const char* key, const char* value) {
    guarded([&] { set_value_inmap<std::string>(handle, text_or_empty(key), text_or_empty(value)); });
}

int py_get_int_inarray(Handle handle, int index) { return get_value_inarray<int>(handle, index); }
double py_get_double_inarray(Handle handle, int index) { return get_value_inarray<double>(handle, index); }
bool py_get_bool_inarray(Handle handle, int index) { return get_value_inarray<bool>(handle, index); }
void py_get_string_inarray(Handle handle, int index, char* valueOut) {
    guarded([&] { put_text(valueOut, get_value_inarray<std::string>(handle, index)); });
}

void* py_get_ptr_inmap(Handle handle, int index, char* keyOut) {
    return guarded([&] { return py_get_value_inmap<void*>(handle, index, keyOut); });
}
int py_get_int_inmap(Handle handle, int index, char* keyOut) {
    return guarded([&] { return py_get_value_inmap<int>(handle, index, keyOut); });
}
double py_get_double_inmap(Handle handle, int index, char* keyOut) {
    return guarded([&] { return py_get_value_inmap<double>(handle, index, keyOut); });
}
bool py_get_bool_inmap(Handle handle, int index, char* keyOut) {
    return guarded([&] { return py_get_value_inmap<bool>(handle, index, keyOut); });
}
void py_get_string_inmap(Handle handle, int index, char* keyOut, char* valueOut) {
    guarded([&] { put_text(valueOut, py_get_value_inmap<std::string>(handle, index, keyOut)); });
}

void py_release_obj2(Handle handle) {
    guarded([&] { release_obj_inpool2(handle); });
}

} // namespace python_api
