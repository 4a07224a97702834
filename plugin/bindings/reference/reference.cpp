#include "bindings/reference/reference.hpp"

#include "host_api/definition_text.hpp"
#include "object/path.hpp"
#include "object/records.hpp"
#include "object/value_form.hpp"

#include <tuple>

namespace {

/// Makes a definition text from a record's list of fields.
template <class Record, Text Help>
constexpr auto record_text = [] {
    constexpr auto size = std::apply(
        []<class... F>(const F&... field) {
            return ((std::string_view(field.key).size() +
                     std::string_view(mk_object::ValueForm<typename F::Value>::name).size() + 2) +
                    ...);
        },
        Record::fields);
    std::array<char, size + Help.view().size() + 2> text{};
    char* end = text.data() + 1; // after the result, which is empty
    const auto append = [&end](std::string_view part, char after) {
        end = std::copy(part.begin(), part.end(), end);
        *end++ = after;
    };
    std::apply(
        [&]<class... F>(const F&...) { (append(mk_object::ValueForm<typename F::Value>::name, ','), ...); },
        Record::fields);
    end[-1] = '\0';
    std::apply([&](const auto&... field) { (append(field.key, ','), ...); }, Record::fields);
    end[-1] = '\0';
    append(Help.view(), '\0');
    return text;
}();

} // namespace

const ReferenceRow felspar_records[] = {
#define MK_RECORD_CLASS(T, lists, help) {#T, record_text<mk_object::T, help>.data()},
#include "object/record_classes.inc"
    {"PathInfo", record_text<mk_object::mk_Path, "A path taken apart: Extension without its dot; Type is File, Folder "
                                                 "or empty for anything else">
                     .data()},
    {nullptr, nullptr}};
