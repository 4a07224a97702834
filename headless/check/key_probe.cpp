#include "headless/check/key_probe.hpp"

#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

namespace headless::check {
namespace {

using script::ParsedDefinition;
using script::ValueKind;

/// What the functions call the parameter that takes a key.
constexpr std::array<std::string_view, 4> key_names{"parmname", "desc", "groupname", "varname"};

/// A send, a receive or an output can be asked for different keys.
bool is_category(const script::Parameter& parameter) { return parameter.name == "category"; }

bool takes_key(const script::Parameter& parameter) {
    return std::ranges::find(key_names, parameter.name) != key_names.end();
}

/// The literal that a script passes for the first parameter that fits.
template <class Predicate>
LiteralArgument literal_for(const ParsedDefinition& definition, const std::vector<LiteralArgument>& arguments,
                            Predicate fits) {
    std::size_t index = 0;
    for (const script::Parameter& parameter : definition.parameters) {
        if (!parameter.is_argument())
            continue;
        if (fits(parameter))
            return index < arguments.size() ? arguments[index] : std::nullopt;
        ++index;
    }
    return std::nullopt;
}

} // namespace

KeyProbe::KeyProbe(workstation::Workstation& workstation) : workstation_(workstation) {
    for (const workstation::ScriptFunction& function : workstation.script_functions()) {
        ParsedDefinition definition = script::parse_definition(function.definition);
        if (std::ranges::any_of(definition.parameters, takes_key))
            functions_.emplace(function.name, Function{std::move(definition), function.call});
    }
    project::Project& project = workstation.project();
    project::Track& track = project.insert_track(0);
    project::Track& other = project.insert_track(1);
    project::Item& item = track.add_item(0.0, 1.0);
    project::Take& take = item.add_take({}, "sample");
    project::Envelope& envelope = take.add_envelope("Volume");
    using workstation::Workstation;
    samples_ = {{"MediaTrack*", Workstation::handle(track)},
                {"MediaItem*", Workstation::handle(item)},
                {"MediaItem_Take*", Workstation::handle(take)},
                {"TrackEnvelope*", Workstation::handle(envelope)}};
    if (auto* send = workstation.function_as<int(MediaTrack*, MediaTrack*)>("CreateTrackSend")) {
        send(Workstation::handle(track), Workstation::handle(other));
        send(Workstation::handle(other), Workstation::handle(track));
        send(Workstation::handle(track), nullptr);
    }
    if (auto* insert =
            workstation.function_as<int(TrackEnvelope*, int, double, double)>("InsertAutomationItem"))
        insert(Workstation::handle(envelope), -1, 0.0, 1.0);
    workstation.take_failures();
}

void* KeyProbe::sample(std::string_view type) const {
    const auto found = std::ranges::find(samples_, type, &std::pair<std::string_view, void*>::first);
    return found == samples_.end() ? nullptr : found->second;
}

std::string KeyProbe::call(const Function& function, const std::string& key, int category) {
    constexpr std::size_t text_bytes = 65536;
    const auto& parameters = function.definition.parameters;
    std::vector<std::vector<char>> buffers(parameters.size());
    std::vector<double> zeros(parameters.size(), 0.0);
    std::vector<void*> pointers(parameters.size(), nullptr);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const script::Parameter& parameter = parameters[i];
        if (takes_key(parameter) || parameter.kind == ValueKind::text) {
            buffers[i].resize(text_bytes + key.size());
            if (takes_key(parameter))
                std::ranges::copy(key, buffers[i].begin());
            pointers[i] = buffers[i].data();
        } else if (parameter.kind == ValueKind::size) {
            pointers[i] = reinterpret_cast<void*>(static_cast<std::intptr_t>(buffers[i - 1].size()));
        } else if (is_category(parameter)) {
            pointers[i] = reinterpret_cast<void*>(static_cast<std::intptr_t>(category));
        } else if (parameter.kind == ValueKind::number || parameter.by_address) {
            pointers[i] = &zeros[i];
        } else if (parameter.kind == ValueKind::handle) {
            pointers[i] = sample(parameter.type);
        }
    }
    function.call(pointers.data(), static_cast<int>(pointers.size()));
    std::string complaint;
    for (const Failure& failure : workstation_.take_failures())
        complaint.append(complaint.empty() ? "" : "; ").append(failure.message);
    return complaint;
}

std::optional<UnknownKey> KeyProbe::unknown_key(const std::string& name,
                                                const std::vector<LiteralArgument>& arguments) {
    const auto function = functions_.find(name);
    if (function == functions_.end())
        return std::nullopt;
    const ParsedDefinition& definition = function->second.definition;
    const auto key = literal_for(definition, arguments, takes_key);
    if (!key)
        return std::nullopt;
    auto known = complaints_.find({name, *key});
    if (known == complaints_.end()) {
        const std::string category = literal_for(definition, arguments, is_category).value_or("0");
        int number = 0;
        std::from_chars(category.data(), category.data() + category.size(), number);
        known = complaints_.insert({{name, *key}, call(function->second, *key, number)}).first;
    }
    return known->second.empty() ? std::nullopt : std::optional(UnknownKey{*key, known->second});
}

} // namespace headless::check
