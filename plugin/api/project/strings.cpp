#include "api/project/strings.hpp"

#include "common/letter_case.hpp"
#include "host_api/arguments.hpp"
#include "utility/mk_utility.hpp"
#include "utility/safe_regex.hpp"

#include <algorithm>
#include <regex>
#include <string_view>

namespace {

std::string fold_case(const char* text) { return letter_case::lowered(text_or_empty(text)); }

} // namespace

bool mk_api::string::CheckIncludeString(const char* textString, const char* checkString, bool* checkOut) {
    put(checkOut, fold_case(textString).find(fold_case(checkString)) != std::string::npos);
    return true;
}

namespace MK_FELSPAR {

bool CheckSameString(const char* textString, const char* checkString, bool* checkOut) {
    put(checkOut, fold_case(textString) == fold_case(checkString));
    return true;
}

bool CheckIncludePerfectString(const char* textString, const char* checkString, bool* checkOut) {
    put(checkOut, std::string_view(text_or_empty(textString)).find(text_or_empty(checkString)) !=
                      std::string_view::npos);
    return true;
}

bool ReplaceSearchString(const char* textString, const char* searchString, const char* replaceString,
                         char* stringOut, int stringOut_sz) {
    try {
        mk_utility::strcpy(stringOut, stringOut_sz,
                           mk_utility::replace_all(text_or_empty(textString), text_or_empty(searchString),
                                                   text_or_empty(replaceString)));
        return true;
    } catch (const std::regex_error&) {
        return false;
    }
}

bool DeleteBlankString(const char* testString, char* stringOut, int stringOut_sz) {
    std::string text(text_or_empty(testString));
    std::erase(text, ' ');
    mk_utility::strcpy(stringOut, stringOut_sz, std::move(text));
    return true;
}

bool GetStringSplitList(const std::string& text, const std::string& separators,
                        std::vector<std::string>& pieces) {
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, begin), text.size());
        pieces.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return true;
}

} // namespace MK_FELSPAR
