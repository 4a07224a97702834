// Records by their keys, and the definition texts of the functions.

#include "object/records.hpp"

#include "bindings/reference/reference.hpp"
#include "common/definition_text.hpp"
#include "entry/api_table.hpp"
#include "tests/platforms/pure_results/results.hpp"

namespace pure_results {
namespace {

using mk_object::mk_Value;

std::string shown_value(const mk_Value& value) {
    static constexpr const char* zero_address = "null";
    std::string text = std::to_string(value.index()) + ":";
    if (const int* integer = std::get_if<int>(&value))
        text += std::to_string(*integer);
    else if (const double* number = std::get_if<double>(&value))
        text += shown(*number);
    else if (const bool* flag = std::get_if<bool>(&value))
        text += *flag ? "true" : "false";
    else if (const std::string* string = std::get_if<std::string>(&value))
        text += shown(*string);
    else
        text += std::get<void*>(value) ? "address" : zero_address;
    return text;
}

template <class Record>
void add_record(Results& results, const char* name) {
    Record record;
    int address = 0;
    const mk_Value values[] = {7, 0.1, true, std::string("\u53f0\u8a5e"), static_cast<void*>(&address)};
    for (const char* key : {"Name", "Track", "Volume", "Index", "Time", "MaxPeak", "Pitch", "EndPos",
                            "MasterName", "UniqueTrack", "name", ""}) {
        std::string line = std::string(name) + " " + shown(key) + ":";
        for (const mk_Value& value : values) {
            record.set_value(key, value);
            line += " " + shown_value(record.get_value(key));
        }
        results.add(line);
    }
    std::string present = std::string(name) + " has";
    for (unsigned int i = 0; i < record.get_size(); ++i) {
        const auto [key, type] = record.get_key_info(static_cast<int>(i));
        present.append(" ").append(type).append(" ") += key;
    }
    results.add(present);
}

void sweep_reference(Results& results, const char* name, const ReferenceRow* rows) {
    for (; rows->name; ++rows)
        results.sweep(std::string(rows->name) + (rows->definition ? rows->definition : ""));
    results.end_sweep(name);
}

} // namespace

void add_records(Results& results) {
    add_record<mk_object::TrackDetail>(results, "TrackDetail");
    add_record<mk_object::mk_Peak>(results, "mk_Peak");
    add_record<mk_object::mk_Midi>(results, "mk_Midi");
    add_record<mk_object::LINGOMAT_Tracks>(results, "LINGOMAT_Tracks");
    for (std::size_t i = 0; i < api_define_list.count; ++i) {
        const ApiRow& row = api_define_list.rows[i];
        const char* part = row.definition; // four texts, each with its NUL
        std::string line = row.api_name;
        for (int parts = 0; parts < 4; ++parts, part += std::string_view(part).size() + 1)
            line.append("|").append(part);
        results.sweep(line);
    }
    results.end_sweep("definition texts");
    sweep_reference(results, "functions of the Lua module", felspar_lua_functions);
    sweep_reference(results, "functions for Python", felspar_python_functions);
    sweep_reference(results, "records of lists", felspar_records);
}

} // namespace pure_results
