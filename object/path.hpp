#pragma once
// A file system path taken apart. The one record with a JSON form; it has no pool, and the generic key walk
// does not see its fields.

#include "object/record.hpp"

namespace mk_object {

class MK_EXPORT mk_Path final : public mk_List {
public:
    mk_Path();

    /// Reads `path`; all fields stay absent when it does not exist.
    explicit mk_Path(std::string path);

    /// Takes each field from its typed form in `source`.
    explicit mk_Path(json& source);

    /// Takes an existing path apart. It is made absolute by the current directory; nothing in it is resolved.
    /// @returns 0, or 1 with the record as it was when the path does not exist.  @throws
    /// std::filesystem::filesystem_error
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
