#include "bindings/python/value_pools.hpp"

void python_utility::release_obj_inpool2(unsigned long long handle) {
    const auto entry = pyvar_array_list.find(handle);
    if (entry == pyvar_array_list.end())
        return;
    const std::shared_ptr<ValueArray> array = entry->second; // outlives its entry, as it may contain itself
    for (const mk_Value& value : *array)
        if (void* const* inner = std::get_if<void*>(&value))
            pyvar_array_list.erase(reinterpret_cast<unsigned long long>(*inner));
    pyvar_array_list.erase(handle);
}
