#include "object/mk_list.hpp"

#include "object/records.hpp"

#include <nlohmann/json.hpp>

namespace mk_object {

Pool<std::vector<mk_List*>> mk_List::mkList_pool;

void mk_List::release_inpool() {}
std::pair<std::string, std::string> mk_List::get_key_info(int) { return {}; }
unsigned int mk_List::get_size() { return 0; }
mk_Value mk_List::get_value(std::string) { return 0; }
void mk_List::set_value(std::string, mk_Value) {}
json mk_List::to_json() { return nullptr; }

namespace {

/// The array's entry points at the record, the class pool owns it; neither stays without the other.
template <class T>
void append(std::vector<mk_List*>& array, std::shared_ptr<T> record) {
    array.push_back(record.get());
    try {
        mk_List::set_obj_topool(record);
    } catch (...) {
        array.pop_back();
        throw;
    }
}

std::vector<mk_List*>* find_array(unsigned long long handle) {
    const auto found = mk_List::mkList_pool.find(handle);
    return found == mk_List::mkList_pool.end() ? nullptr : found->second.get();
}

} // namespace

template <class T>
void mk_List::set_obj_topool(std::shared_ptr<T>& obj) {
    T::pool.emplace(obj->pool_key, obj);
}

unsigned long long mk_List::create_mklist_array() {
    auto array = std::make_shared<std::vector<mk_List*>>();
    const auto handle = reinterpret_cast<unsigned long long>(array.get());
    mkList_pool.emplace(handle, std::move(array));
    return handle;
}

template <class T>
mk_List* mk_List::create_mkobj_inarray(unsigned long long arrayHandle) {
    std::vector<mk_List*>* array = find_array(arrayHandle);
    if (!array)
        return nullptr;
    append(*array, std::make_shared<T>());
    return array->back();
}

template <class T>
std::vector<mk_List*> mk_List::to_mkList_array(std::vector<T>& list) {
    std::vector<mk_List*> array;
    array.reserve(list.size());
    for (T& record : list)
        array.push_back(&record);
    return array;
}

template <class T>
std::vector<mk_List*>* mk_List::pool_mkList_array(std::vector<T>& list) {
    const unsigned long long handle = create_mklist_array();
    std::vector<mk_List*>* array = find_array(handle);
    try {
        array->reserve(list.size());
        for (const T& record : list)
            append(*array, std::make_shared<T>(record));
    } catch (...) {
        release_mkList(handle);
        throw;
    }
    return array;
}

mk_List* mk_List::find_record(unsigned long long handle) {
    const auto find_in = [handle](const auto& pool) -> mk_List* {
        const auto found = pool.find(handle);
        return found == pool.end() ? nullptr : found->second.get();
    };
    if (mk_List* record = find_in(mk_Peak::pool))
        return record;
    if (mk_List* record = find_in(TrackDetail::pool))
        return record;
    return find_in(mk_Midi::pool);
}

bool mk_List::release_mkList(unsigned long long arrayHandle) {
    const std::vector<mk_List*>* array = find_array(arrayHandle);
    if (!array)
        return false;
    for (const mk_List* entry : *array) // which a script may have released by itself
        if (mk_List* record = find_record(reinterpret_cast<unsigned long long>(entry)))
            record->release_inpool();
    mkList_pool.erase(arrayHandle);
    return true;
}

template MK_EXPORT void mk_List::set_obj_topool(std::shared_ptr<TrackDetail>&);
template MK_EXPORT void mk_List::set_obj_topool(std::shared_ptr<mk_Midi>&);
template MK_EXPORT void mk_List::set_obj_topool(std::shared_ptr<mk_Peak>&);
template MK_EXPORT mk_List* mk_List::create_mkobj_inarray<TrackDetail>(unsigned long long);
template MK_EXPORT mk_List* mk_List::create_mkobj_inarray<mk_Midi>(unsigned long long);
template MK_EXPORT mk_List* mk_List::create_mkobj_inarray<mk_Peak>(unsigned long long);
template MK_EXPORT std::vector<mk_List*> mk_List::to_mkList_array(std::vector<TrackDetail>&);
template MK_EXPORT std::vector<mk_List*> mk_List::to_mkList_array(std::vector<mk_Peak>&);
template MK_EXPORT std::vector<mk_List*>* mk_List::pool_mkList_array(std::vector<TrackDetail>&);
template MK_EXPORT std::vector<mk_List*>* mk_List::pool_mkList_array(std::vector<mk_Peak>&);

} // namespace mk_object
