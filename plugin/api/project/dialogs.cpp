#include "api/project/dialogs.hpp"

#include "api/project/strings.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "utility/mk_utility.hpp"

bool mk_api::UI::ShowMessageBox_Ex(const char* messageStr, const char* windowTitleStr, int windowType,
                                   int* pushedButtonTypeOut) {
    constexpr int cancel = 2;
    if (windowType < 0 || windowType > 6)
        return false;
    const int button =
        call(ShowMessageBox, text_or_empty(messageStr), text_or_empty(windowTitleStr), windowType);
    put(pushedButtonTypeOut, button);
    return button != cancel;
}

bool MK_FELSPAR::GetUserInputList(const std::string& title, int fieldCount, const std::string& captions,
                                  const std::string& defaults, std::vector<std::string>& answers) {
    char values[1024];
    mk_utility::strcpy(values, sizeof values, defaults);
    const bool confirmed = call(GetUserInputs, title.c_str(), fieldCount, captions.c_str(), values,
                                static_cast<int>(sizeof values));
    GetStringSplitList(values, ",", answers);
    return confirmed;
}
