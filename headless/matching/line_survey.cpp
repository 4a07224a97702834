#include "headless/matching/line_survey.hpp"

#include "common/folder_entries.hpp"
#include "common/letter_case.hpp"
#include "common/path_text.hpp"
#include "headless/matching/near_match.hpp"

#include <algorithm>
#include <map>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace headless::matching {
namespace {

namespace fs = std::filesystem;

using Paths = std::vector<fs::path>;
using PathsByName = std::unordered_map<std::string, Paths>;

/// Maximum number of base lines compared per loose name; more would be slow for a large folder in which all
/// lines have the same name.
constexpr std::size_t max_candidates = 8;

bool is_wav(const fs::path& file) { return letter_case::lowered(file.extension().string()) == ".wav"; }

/// False for a file that no longer exists, and for a link without a target.
bool is_there(const fs::path& file, std::error_code& error) {
    const bool found = fs::exists(file, error);
    if (error == std::errc::too_many_symbolic_link_levels)
        error.clear();
    return found;
}

/// Appends the lines in a folder and below it; links to folders are not followed.
Result<void> append_lines(const fs::path& folder, Paths& lines) {
    std::error_code error;
    const std::vector<folder_entries::Entry> entries = folder_entries::read(folder, error);
    if (error)
        return tl::unexpected(system_failure(folder, error.value()));
    for (const auto& entry : entries) {
        const fs::path path = folder / path_text::path_of(entry.name);
        if (is_wav(path) && is_there(path, error))
            lines.push_back(path);
        if (error)
            return tl::unexpected(system_failure(path, error.value()));
        if (!entry.is_folder)
            continue;
        if (auto appended = append_lines(path, lines); !appended)
            return appended;
    }
    return {};
}

/// By their bytes with "/" between folders, which is the same order on every system.
void sort_by_text(Paths& files) {
    std::vector<std::pair<std::string, fs::path>> named;
    named.reserve(files.size());
    for (fs::path& file : files)
        named.emplace_back(file.generic_string(), std::move(file));
    std::ranges::sort(named, {}, &std::pair<std::string, fs::path>::first);
    std::ranges::transform(named, files.begin(), [](auto& entry) { return std::move(entry.second); });
}

std::string name_of(const fs::path& file) { return file.filename().string(); }

PathsByName by_name(const Paths& files) {
    PathsByName names;
    names.reserve(files.size());
    for (const fs::path& file : files)
        names[name_of(file)].push_back(file);
    return names;
}

std::vector<SameName> duplicates(PathsByName& names) {
    std::vector<SameName> result;
    for (auto& [name, files] : names) {
        if (files.size() > 1) {
            sort_by_text(files);
            result.push_back({name, files});
        }
    }
    std::ranges::sort(result, {}, &SameName::name);
    return result;
}

Paths without_names(const Paths& files, const PathsByName& names) {
    Paths result;
    std::ranges::copy_if(files, std::back_inserter(result),
                         [&](const fs::path& file) { return !names.contains(name_of(file)); });
    return result;
}

std::vector<LinePair> pair_lines(const Paths& subjects, const PathsByName& bases) {
    std::vector<LinePair> pairs;
    for (const fs::path& subject : subjects)
        if (const auto partners = bases.find(name_of(subject)); partners != bases.end())
            pairs.push_back({subject, partners->second.front()});
    return pairs;
}

PathsByName by_loose_key(const Paths& files) {
    PathsByName keys;
    for (const fs::path& file : files) {
        Paths& candidates = keys[loose_key(name_of(file))];
        if (candidates.size() < max_candidates)
            candidates.push_back(file);
    }
    return keys;
}

/// The plausible candidate with the fewest differences; without a base if none is plausible.
NearLine nearest(const fs::path& subject, const Paths& candidates) {
    NearLine result{subject, {}, {}};
    for (const fs::path& base : candidates) {
        auto differences = differences_between(name_of(subject), name_of(base));
        const bool is_nearer = result.base.empty() || differences.size() < result.differences.size();
        if (!differences.empty() && is_nearer) {
            result.base = base;
            result.differences = std::move(differences);
        }
    }
    return result;
}

std::vector<NearLine> near_lines(const Paths& subjects, const Paths& bases) {
    const PathsByName candidates = by_loose_key(bases);
    std::vector<NearLine> result;
    for (const fs::path& subject : subjects) {
        const auto found = candidates.find(loose_key(name_of(subject)));
        if (found == candidates.end())
            continue;
        NearLine near = nearest(subject, found->second);
        if (!near.base.empty())
            result.push_back(std::move(near));
    }
    return result;
}

} // namespace

Result<std::vector<fs::path>> find_lines(const fs::path& folder) {
    Paths lines;
    return append_lines(folder, lines).map([&] { return std::move(lines); });
}

LineSurvey survey_lines(Paths subjects, Paths bases) {
    PathsByName subject_names = by_name(subjects);
    PathsByName base_names = by_name(bases);
    sort_by_text(subjects);
    sort_by_text(bases);
    LineSurvey survey;
    survey.pairs = pair_lines(subjects, base_names); // before the duplicates are sorted
    survey.unpaired_subjects = without_names(subjects, base_names);
    survey.unpaired_bases = without_names(bases, subject_names);
    survey.near_lines = near_lines(survey.unpaired_subjects, survey.unpaired_bases);
    survey.same_subject_names = duplicates(subject_names);
    survey.same_base_names = duplicates(base_names);
    return survey;
}

} // namespace headless::matching
