#pragma once
// The common base of all records for the script bindings, and the pools that keep records alive for scripts
// that hold only a handle. The pools are process-wide and unlocked. Only release calls empty them.

#include "host_api/export.hpp"
#include "object/value.hpp"

#include <nlohmann/json_fwd.hpp>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

struct lua_State;

namespace mk_object {

using json = nlohmann::json; // complete with <nlohmann/json.hpp>

/// Owns records by handle. A record's handle is its address.
template <class T>
using Pool = std::map<unsigned long long, std::shared_ptr<T>>;

/// A record of named, typed, optional fields. `pushvalue`, `get_size`, `get_key_info` and `to_json` see only
/// the fields that have been set. Keys are compared exactly. An `mk_List*` never owns its record, which is
/// destroyed through its own class. Programs may derive their own records.
class MK_EXPORT mk_List {
public:
    /// Pushes one new Lua table with the present fields.
    virtual void pushvalue(lua_State* L) const = 0;

    /// Fills the record from the table at the absolute stack index. A known key makes its field present; a
    /// value of another type sets the field to the zero of its own type. Reading stops at the first key that
    /// is not a string.
    virtual void set_value_from_luatable(lua_State* L, int index) = 0;

    /// Removes the record from its class pool if it is there, which may destroy it.
    virtual void release_inpool();

    /// Returns the key and the type name of the index-th present field.
    /// @throws std::out_of_range if there is no such field
    virtual std::pair<std::string, std::string> get_key_info(int index);

    /// Returns the number of present fields.
    virtual unsigned int get_size();

    /// Returns the field's value, present or not. Returns `int` 0 for an unknown key.
    virtual mk_Value get_value(std::string key);

    /// Sets a field if the value has exactly the field's type. Ignores any other value, and an unknown key.
    virtual void set_value(std::string key, mk_Value value);

    /// Returns the record's JSON form, or null if it has none.
    virtual json to_json();

    /// The address of this object; its handle if pooled.
    unsigned long long pool_key;

    /// All arrays that scripts hold. An array's handle is the address of the vector. The records are owned by
    /// the class pools, except those that a program appends, whose owner the program chooses. The entry of a
    /// destroyed record becomes null.
    static Pool<std::vector<mk_List*>> mkList_pool;

    /// Adds a record to its class pool. A record that is already there stays as it is.
    template <class T>
    static void set_obj_topool(std::shared_ptr<T>& obj);

    /// Creates an empty array and returns its handle.
    static unsigned long long create_mklist_array();

    /// Appends a new record to an array.
    /// @returns the record, owned by its class pool; null for an unknown handle
    template <class T>
    static mk_List* create_mkobj_inarray(unsigned long long arrayHandle);

    /// Returns pointers to the elements, valid as long as `list` is alive and unchanged. Does not use the
    /// pools.
    template <class T>
    static std::vector<mk_List*> to_mkList_array(std::vector<T>& list);

    /// Adds to the pool a new array of records that share the elements' cells.
    /// @returns the array; its address is the handle
    template <class T>
    static std::vector<mk_List*>* pool_mkList_array(std::vector<T>& list);

    /// Returns the record with this handle in one of this library's class pools, or null if there is none.
    static mk_List* find_record(unsigned long long handle);

    /// Calls `release_inpool` on each entry of an array, in order, and destroys the array. Records that a
    /// program has appended must still be alive.
    /// @returns false for an unknown handle
    static bool release_mkList(unsigned long long arrayHandle);

protected:
    mk_List();
    mk_List(const mk_List&); ///< with a key of its own
    mk_List& operator=(const mk_List&) { return *this; }
    ~mk_List(); // NOLINT(performance-trivially-destructible): programs link it
};

} // namespace mk_object
