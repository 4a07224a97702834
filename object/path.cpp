#include "object/path.hpp"

#include "utility/mk_utility.hpp"

#include <nlohmann/json.hpp>

#include <array>
#include <filesystem>

namespace mk_object {
namespace {

template <class Visit>
void for_each_field(Visit visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, mk_Path::fields);
}

const char* type_word(const std::filesystem::file_status& status) {
    if (is_directory(status))
        return "Folder";
    return is_regular_file(status) ? "File" : "";
}

} // namespace

mk_Path::mk_Path() {
    constexpr std::size_t count = std::tuple_size_v<decltype(fields)>;
    const auto cells = std::make_shared<std::array<mk_LitsItem_inner<std::string>, count>>();
    auto* next = cells->data();
    for_each_field([&](const auto& field) { this->*field.cell = {cells, next++}; });
}

mk_Path::mk_Path(std::string path) : mk_Path() { read_path(std::move(path)); }

mk_Path::mk_Path(json& source) : mk_Path() {
    for_each_field([&](const auto& field) { (this->*field.cell)->set_value_from_json(source, field.key); });
}

int mk_Path::read_path(std::string path) {
    namespace fs = std::filesystem;
    const fs::path absolute = fs::absolute(mk_utility::utf8_to_multi(path));
    std::error_code no_status;
    const fs::file_status status = fs::status(absolute, no_status);
    if (!fs::exists(status))
        return 1;
    const auto [stem, extension] = mk_utility::split_extension(absolute.filename().string());
    const auto set = [](const Cell<std::string>& cell, const std::string& text) {
        cell->set(mk_utility::multi_to_utf8(text));
    };
    set(ParentPath, absolute.parent_path().string());
    set(ParentName, absolute.parent_path().filename().string());
    set(FilePath, absolute.string());
    set(FileName, absolute.filename().string());
    set(FileNameWithoutExtension, stem);
    set(Extension, extension);
    set(Type, type_word(status));
    return 0;
}

void mk_Path::pushvalue(lua_State* L) const {
    lua_createtable(L, 0, 0);
    for_each_field([&](const auto& field) { push_field(L, field.key, *(this->*field.cell)); });
}

void mk_Path::set_value_from_luatable(lua_State* L, int index) {
    for_each_entry(L, index, [&](std::string_view key) {
        for_each_field([&](const auto& field) {
            if (key == field.key)
                (this->*field.cell)->set(ValueForm<std::string>::read(L, -1));
        });
    });
}

json mk_Path::to_json() {
    json result;
    for_each_field([&](const auto& field) { (this->*field.cell)->set_json(result, field.key); });
    return result;
}

} // namespace mk_object
