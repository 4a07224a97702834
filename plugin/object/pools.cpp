// The pools of records and arrays, by handle.

#include "object/records.hpp"

#include <algorithm>
#include <cstddef>

namespace mk_object {

// A record accesses the pool of arrays in its destructor, so that pool is created first and destroyed last.
Pool<std::vector<mk_List*>> mk_List::mkList_pool;
#define MK_RECORD_CLASS(T, lists, help) Pool<T> T::pool;
#include "object/record_classes.inc"
#undef MK_RECORD_CLASS
Pool<LINGOMAT_Tracks> LINGOMAT_Tracks::pool;

namespace {

std::vector<mk_List*>* find_array(unsigned long long handle) {
    const auto found = mk_List::mkList_pool.find(handle);
    return found == mk_List::mkList_pool.end() ? nullptr : found->second.get();
}

/// A record that is in an array. If it is destroyed before the array, its entry there becomes null.
template <class T>
struct ArrayRecord {
    template <class... Source>
    ArrayRecord(unsigned long long array_handle, std::size_t array_index, const Source&... source)
        : handle(array_handle), index(array_index), record(source...) {}
    ArrayRecord(const ArrayRecord&) = delete;
    ~ArrayRecord() {
        std::vector<mk_List*>* array = find_array(handle);
        if (!array)
            return;
        const bool in_place = index < array->size() && (*array)[index] == &record;
        const auto entry = in_place ? array->begin() + static_cast<std::ptrdiff_t>(index)
                                    : std::find(array->begin(), array->end(), &record);
        if (entry != array->end())
            *entry = nullptr;
    }

    unsigned long long handle;
    std::size_t index;
    T record;
};

/// Appends a record made from `source`. The array's entry points at it, and the class pool owns it. If either
/// step fails, neither takes effect.
template <class T, class... Source>
mk_List* append(unsigned long long handle, std::vector<mk_List*>& array, const Source&... source) {
    auto in_array = std::make_shared<ArrayRecord<T>>(handle, array.size(), source...);
    T* const address = &in_array->record;
    std::shared_ptr<T> record(std::move(in_array), address);
    array.push_back(address);
    try {
        mk_List::set_obj_topool(record);
    } catch (...) {
        array.pop_back();
        throw;
    }
    return address;
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
    return array ? append<T>(arrayHandle, *array) : nullptr;
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
            append<T>(handle, *array, record);
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
#define MK_RECORD_CLASS(T, lists, help)                                                                      \
    if (mk_List* record = find_in(T::pool))                                                                  \
        return record;
#include "object/record_classes.inc"
#undef MK_RECORD_CLASS
    return find_in(LINGOMAT_Tracks::pool);
}

bool mk_List::release_mkList(unsigned long long arrayHandle) {
    const auto found = mkList_pool.find(arrayHandle);
    if (found == mkList_pool.end() || !found->second)
        return false;
    const std::shared_ptr<std::vector<mk_List*>> array = found->second;
    for (std::size_t i = 0; i < array->size(); ++i) // entries become null as their records are destroyed
        if (mk_List* record = (*array)[i])
            record->release_inpool();
    mkList_pool.erase(arrayHandle);
    return true;
}

#define MK_EXPORT_listed(T)                                                                                  \
    template MK_EXPORT std::vector<mk_List*> mk_List::to_mkList_array(std::vector<T>&);                      \
    template MK_EXPORT std::vector<mk_List*>* mk_List::pool_mkList_array(std::vector<T>&);
#define MK_EXPORT_not_listed(T)
#define MK_RECORD_CLASS(T, lists, help)                                                                      \
    template MK_EXPORT void mk_List::set_obj_topool(std::shared_ptr<T>&);                                    \
    template MK_EXPORT mk_List* mk_List::create_mkobj_inarray<T>(unsigned long long);                        \
    MK_EXPORT_##lists(T)
#include "object/record_classes.inc"

} // namespace mk_object
