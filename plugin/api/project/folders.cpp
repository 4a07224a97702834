#include "api/project/folders.hpp"

#include "common/path_text.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "utility/mk_utility.hpp"

#include <array>
#include <ctime>
#include <exception>
#include <filesystem>

namespace MK_FELSPAR {
namespace {

using path_text::path_of;
using path_text::text_of;
using PathBuffer = std::array<char, 1024>;

const char* stamp_format(int time_type) {
    switch (time_type) {
    case 1:
        return "_%m%d_%H%M";
    case 2:
        return "_%m%d_%H%M%S";
    case 3:
        return "_%Y%m%d_%H%M%S";
    default:
        return "";
    }
}

std::string stamp(int time_type) {
    const std::time_t now = std::time(nullptr);
    std::array<char, 64> text{};
    if (const std::tm* local = std::localtime(&now))
        std::strftime(text.data(), text.size(), stamp_format(time_type), local);
    return text.data();
}

/// @param name_out  null if the caller does not want the composed name
bool make_folder(const char* parent, const char* name, int time_type, char* path_out, int path_size,
                 char* name_out, int name_size) {
    try {
        std::string path;
        std::string composed_name;
        SetFolderFolder_Common(text_or_empty(parent), name, time_type, path, composed_name);
        mk_utility::strcpy(name_out, name_size, composed_name);
        mk_utility::strcpy(path_out, path_size, path);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

PathBuffer record_path(ReaProject* project) {
    PathBuffer path{};
    call(GetSetProjectInfo_String, project, "RECORD_PATH", path.data(), false);
    return path;
}

} // namespace

void SetFolderFolder_Common(std::string parentPath, const char* folderName, int timeType,
                            std::string& fullPath, std::string& composedName) {
    composedName = text_or_empty(folderName) + stamp(timeType);
    const std::filesystem::path folder = path_of(parentPath) / path_of(composedName);
    fullPath = text_of(folder);
    std::filesystem::create_directories(folder);
}

bool SetProjectPathFolder(const char* folderName, int timeType, char* fullPathOut, int fullPathOut_sz,
                          char* addPathOut, int addPathOut_sz) {
    PathBuffer parent{};
    call(GetProjectPath, parent.data(), static_cast<int>(parent.size()));
    return make_folder(parent.data(), folderName, timeType, fullPathOut, fullPathOut_sz, addPathOut,
                       addPathOut_sz);
}

bool SetResoucePathFolder(const char* folderName, int timeType, char* fullPathOut, int fullPathOut_sz,
                          char* addPathOut, int addPathOut_sz) {
    return make_folder(call(GetResourcePath), folderName, timeType, fullPathOut, fullPathOut_sz, addPathOut,
                       addPathOut_sz);
}

bool SetPathFolder(const char* folderPath, const char* folderName, int timeType, char* fullPathOut,
                   int fullPathOut_sz) {
    return make_folder(folderPath, folderName, timeType, fullPathOut, fullPathOut_sz, nullptr, 0);
}

bool SetProjectInfoRecPath(ReaProject* projID, const char* path, char* beforePathOut, int beforePathOut_sz) {
    mk_utility::strcpy(beforePathOut, beforePathOut_sz, record_path(projID).data());
    PathBuffer after{};
    mk_utility::strcpy(after.data(), static_cast<int>(after.size()), text_or_empty(path));
    call(GetSetProjectInfo_String, projID, "RECORD_PATH", after.data(), true);
    return true;
}

bool SetProjectInfoRecAddPath(ReaProject* projID, const char* path, char* beforePathOut, int beforePathOut_sz,
                              char* afterPathOut, int afterPathOut_sz) {
    const PathBuffer before = record_path(projID);
    mk_utility::strcpy(beforePathOut, beforePathOut_sz, before.data());
    if (!afterPathOut)
        return false;
    try {
        const std::filesystem::path after = path_of(before.data()) / path_of(text_or_empty(path));
        mk_utility::strcpy(afterPathOut, afterPathOut_sz, text_of(after));
    } catch (const std::filesystem::filesystem_error&) { // a text that is no path on this system
        return false;
    }
    call(GetSetProjectInfo_String, projID, "RECORD_PATH", afterPathOut, true);
    return true;
}

} // namespace MK_FELSPAR
