#pragma once
// What every record is to the script bindings, and the pools in which records wait for scripts that hold
// nothing but a handle. The pools are process-wide, unlocked, and emptied by release calls alone.

#include "host/export.hpp"
#include "object/value.hpp"

#include <nlohmann/json_fwd.hpp>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using json = nlohmann::json;

namespace mk_object {

/// Owns records by handle; a record's handle is its address.
template <class T>
using Pool = std::map<unsigned long long, std::shared_ptr<T>>;

/// A record of named, typed, optional fields. Only fields that have been given a value are seen by
/// `pushvalue`, `get_size`, `get_key_info` and `to_json`. Keys are compared exactly. An `mk_List*` never
/// owns.
class MK_EXPORT mk_List {
public:
    /// Pushes one new Lua table that holds the present fields.
    virtual void pushvalue(lua_State* L) const = 0;

    /// Fills the record from the table at the absolute stack index. A known key makes its field present, with
    /// the zero of its type when the value has another one; the first key that is no string ends the reading.
    virtual void set_value_from_luatable(lua_State* L, int index) = 0;

    /// Takes the record out of its class pool, if it is there; that may destroy it.
    virtual void release_inpool();

    /// Key and type name of the index-th present field. @throws std::out_of_range when there is none
    virtual std::pair<std::string, std::string> get_key_info(int index);

    /// Number of present fields.
    virtual unsigned int get_size();

    /// The field's value, present or not; `int` 0 for an unknown key.
    virtual mk_Value get_value(std::string key);

    /// Stores a value that has exactly the field's type; anything else, and an unknown key, is dropped.
    virtual void set_value(std::string key, mk_Value value);

    /// The record's JSON form, null where it has none.
    virtual json to_json();

    /// The address of this very object, its handle when pooled.
    unsigned long long pool_key;

    /// All arrays that scripts hold. An array's handle is the vector's address; its entries belong to the
    /// class pools.
    static Pool<std::vector<mk_List*>> mkList_pool;

    /// Puts a record into its class pool; one that is there already stays as it is.
    template <class T>
    static void set_obj_topool(std::shared_ptr<T>& obj);

    /// Handle of a new empty array.
    static unsigned long long create_mklist_array();

    /// Appends a new record to an array. @returns the record, owned by its class pool; null for an unknown
    /// handle
    template <class T>
    static mk_List* create_mkobj_inarray(unsigned long long arrayHandle);

    /// Pointers to the elements, valid as long as `list` is alive and unchanged; no pool is touched.
    template <class T>
    static std::vector<mk_List*> to_mkList_array(std::vector<T>& list);

    /// Pools a new array of records that share the elements' cells. @returns the array; its address is the
    /// handle
    template <class T>
    static std::vector<mk_List*>* pool_mkList_array(std::vector<T>& list);

    /// The living record of a class pool, null for any other number.
    static mk_List* find_record(unsigned long long handle);

    /// Destroys an array and its records, as far as they still live. @returns false for an unknown handle
    static bool release_mkList(unsigned long long arrayHandle);

protected:
    mk_List() : pool_key(own_key()) {}
    mk_List(const mk_List&) : pool_key(own_key()) {}
    mk_List& operator=(const mk_List&) { return *this; }
    ~mk_List() = default;

private:
    unsigned long long own_key() const { return reinterpret_cast<unsigned long long>(this); }
};

} // namespace mk_object
