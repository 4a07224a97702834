#include "object/path.hpp"

#include "common/path_text.hpp"
#include "common/paths.hpp"
#include "object/record_operations.hpp"
#include "utility/mk_utility.hpp"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace mk_object {
namespace {

const char* type_word(const std::filesystem::file_status& status) {
    if (is_directory(status))
        return "Folder";
    return is_regular_file(status) ? "File" : "";
}

} // namespace

mk_Path::mk_Path() { make_cells(*this); }
mk_Path::mk_Path(const mk_Path&) = default;
mk_Path::~mk_Path() = default;

mk_Path::mk_Path(std::string path) : mk_Path() { read_path(std::move(path)); }

mk_Path::mk_Path(json& source) : mk_Path() {
    each_field(*this,
               [&](const auto& field, const auto& cell) { cell->set_value_from_json(source, field.key); });
}

int mk_Path::read_path(std::string path) {
    namespace fs = std::filesystem;
    if (path.empty()) // std::filesystem has no absolute form of it
        return 1;
    const fs::path absolute = paths::absolute(path_text::path_of(path));
    std::error_code no_status;
    const fs::file_status status = fs::status(paths::to_ask_for(absolute), no_status);
    if (!fs::exists(status))
        return 1;
    const auto [stem, extension] = mk_utility::split_extension(path_text::text_of(absolute.filename()));
    ParentPath->set(path_text::text_of(absolute.parent_path()));
    ParentName->set(path_text::text_of(absolute.parent_path().filename()));
    FilePath->set(path_text::text_of(absolute));
    FileName->set(path_text::text_of(absolute.filename()));
    FileNameWithoutExtension->set(stem);
    Extension->set(extension);
    Type->set(type_word(status));
    return 0;
}

void mk_Path::pushvalue(lua_State* L) const { push_record(L, *this); }

void mk_Path::set_value_from_luatable(lua_State* L, int index) { read_record(L, index, *this); }

json mk_Path::to_json() {
    json result;
    each_field(*this, [&](const auto& field, const auto& cell) { cell->set_json(result, field.key); });
    return result;
}

} // namespace mk_object
