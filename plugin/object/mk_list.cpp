#include "object/mk_list.hpp"

#include <nlohmann/json.hpp>

namespace mk_object {

mk_List::mk_List() : pool_key(reinterpret_cast<unsigned long long>(this)) {}
mk_List::mk_List(const mk_List&) : mk_List() {}
mk_List::~mk_List() = default;

void mk_List::release_inpool() {}
std::pair<std::string, std::string> mk_List::get_key_info(int) { return {}; }
unsigned int mk_List::get_size() { return 0; }
mk_Value mk_List::get_value(std::string) { return 0; }
void mk_List::set_value(std::string, mk_Value) {}
json mk_List::to_json() { return nullptr; }

} // namespace mk_object
