#pragma once
// The parts of a file system path. This is the only record with a JSON form. It has no pool, and the generic
// walk over keys does not see its fields.

#include "object/field_cell.hpp"
#include "object/mk_list.hpp"

#include <tuple>

namespace mk_object {

class MK_EXPORT mk_Path : public mk_List {
public:
    mk_Path();

    /// Reads `path`. All fields stay absent if it does not exist.
    mk_Path(std::string path);

    /// Sets each field from its typed form in `source`.
    mk_Path(json& source);

    mk_Path(const mk_Path&); ///< shares the cells
    mk_Path& operator=(const mk_Path&) = default;
    ~mk_Path();

    /// Splits an existing path into its parts. The path is made absolute with the current directory; links
    /// and dots are not resolved.
    /// @returns 0, or 1 with the record unchanged if the path does not exist
    /// @throws std::filesystem::filesystem_error
    int read_path(std::string path);

    void pushvalue(lua_State* L) const override;
    void set_value_from_luatable(lua_State* L, int index) override;
    json to_json() override;

    Cell<std::string> ParentPath;
    Cell<std::string> ParentName;
    Cell<std::string> FilePath;
    Cell<std::string> FileName;
    Cell<std::string> FileNameWithoutExtension;
    Cell<std::string> Extension; ///< without its dot
    Cell<std::string> Type;      ///< "File", "Folder", or empty for anything else that exists

    static constexpr std::tuple fields{Field{"ParentPath", &mk_Path::ParentPath},
                                       Field{"ParentName", &mk_Path::ParentName},
                                       Field{"FilePath", &mk_Path::FilePath},
                                       Field{"FileName", &mk_Path::FileName},
                                       Field{"FileNameWithoutExtension", &mk_Path::FileNameWithoutExtension},
                                       Field{"Extension", &mk_Path::Extension},
                                       Field{"Type", &mk_Path::Type}};
};

} // namespace mk_object
