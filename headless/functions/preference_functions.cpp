// Host functions about the user's preferences. Those of a workstation with a window have no effect here;
// scripts find them at 0 and read back what they set.

#include "common/path_text.hpp"
#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/ini_file.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace headless::functions {
namespace {

constexpr std::array<std::string_view, 9> names{"feedbackmode", "itemfxtail",     "renderclosewhendone",
                                                "showpeaks",    "splitautoxfade", "trackselonmouse",
                                                "undomask",     "volenvrange",    "workrender"};

/// Null for an unknown name, which is reported.
double* preference(Workstation& workstation, const char* function, const char* name) {
    if (!name || std::ranges::find(names, name) == names.end()) {
        report_unknown_key(workstation, function, name);
        return nullptr;
    }
    return &workstation.session.preferences[name];
}

int get_integer(Workstation& workstation, const char* name, int otherwise) {
    const double* value = preference(workstation, "SNM_GetIntConfigVar", name);
    return value ? to_int(*value) : otherwise;
}

double get_number(Workstation& workstation, const char* name, double otherwise) {
    const double* value = preference(workstation, "SNM_GetDoubleConfigVar", name);
    return value ? *value : otherwise;
}

bool set_integer(Workstation& workstation, const char* name, int number) {
    double* value = preference(workstation, "SNM_SetIntConfigVar", name);
    if (value)
        *value = number;
    return value != nullptr;
}

bool set_number(Workstation& workstation, const char* name, double number) {
    double* value = std::isfinite(number) ? preference(workstation, "SNM_SetDoubleConfigVar", name) : nullptr;
    if (value)
        *value = number;
    return value != nullptr;
}

bool get_text(Workstation& workstation, const char* name, char* text, int text_size) {
    const double* value = preference(workstation, "get_config_var_string", name);
    constexpr std::size_t longest_number = 32;
    std::array<char, longest_number> digits{};
    if (value)
        std::snprintf(digits.data(), digits.size(), "%.15g", *value);
    workstation::copy_text(digits.data(), text, text_size);
    return value != nullptr;
}

const char* get_ini_file(Workstation& workstation) {
    static std::string file;
    auto* folder = workstation.function_as<const char*()>("GetResourcePath");
    file = workstation::to_string(folder ? folder() : nullptr) + "/reaper.ini";
    return file.c_str();
}

/// Windows also lists sections and keys if one of the names is null; scripts cannot pass null.
int get_profile_text(const char* section, const char* key, const char* otherwise, const char* file,
                     char* text, int text_size) {
    const auto content = text_of(path_text::path_of(workstation::to_string(file)));
    const auto value = content && *content ? ini_value(**content, workstation::to_string(section),
                                                       workstation::to_string(key))
                                           : std::nullopt;
    const std::string found = value.value_or(workstation::to_string(otherwise));
    workstation::copy_text(found, text, text_size);
    return static_cast<int>(found.size());
}

bool set_profile_text(Workstation& workstation, const char* section, const char* key, const char* value,
                      const char* file) {
    const std::filesystem::path path = path_text::path_of(workstation::to_string(file));
    const auto content = text_of(path);
    const auto written = content.and_then([&](const std::optional<std::string>& old) {
        return write_file(path,
                          with_ini_value(old.value_or(""), workstation::to_string(section),
                                         workstation::to_string(key),
                                         value ? std::optional<std::string_view>(value) : std::nullopt));
    });
    if (!written)
        workstation.report(written.error());
    return written.has_value();
}

} // namespace

std::span<const workstation::HostFunction> preference_functions() {
    static const workstation::HostFunction table[] = {
        {"SNM_GetIntConfigVar",
         host_function<get_integer>("varname,errvalue", "A preference, errvalue if it is not known")},
        {"SNM_SetIntConfigVar",
         host_function<set_integer>("varname,newvalue", "Sets a preference while the workstation runs")},
        {"SNM_GetDoubleConfigVar",
         host_function<get_number>("varname,errvalue", "A preference, errvalue if it is not known")},
        {"SNM_SetDoubleConfigVar",
         host_function<set_number>("varname,newvalue", "Sets a preference while the workstation runs")},
        {"get_config_var_string", host_function<get_text>("varname,bufOut,bufOut_sz",
                                                          "A preference as text; false if it is not known")},
        {"get_ini_file",
         host_function<get_ini_file>("", "The path of the preferences, which need not exist")},
        {"BR_Win32_GetPrivateProfileString",
         host_function<get_profile_text>("sectionName,keyName,defaultString,filePath,stringOut,stringOut_sz",
                                         "The length of the value in a file of sections, and the value")},
        {"BR_Win32_WritePrivateProfileString",
         host_function<set_profile_text>("sectionName,keyName,value,filePath",
                                         "Sets the value in a file of sections")},
    };
    return table;
}

} // namespace headless::functions
