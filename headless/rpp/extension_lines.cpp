#include "headless/rpp/extension_lines.hpp"

#include "headless/chunk/base64.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::rpp {
namespace {

using chunk::Block;
using chunk::Lines;
using chunk::Node;
using chunk::Text;
using project::ExtensionData;

struct KeyAndValue {
    std::string key;
    std::string value;
};

// Empty for a node that holds no value.
std::optional<KeyAndValue> value_of(const Node& node) {
    if (const Text* line = node.line()) {
        if (node.token().empty())
            return std::nullopt;
        return KeyAndValue{std::string(node.token()), std::string(chunk::text_at(*line, 1))};
    }
    const Block* block = node.block();
    if (!block || node.token() != "BIN")
        return std::nullopt;
    KeyAndValue read{std::string(chunk::text_at(block->head, 1)), ""};
    for (const Node& line : block->lines) {
        const auto bytes = line.line() ? chunk::from_base64(line.line()->content()) : std::nullopt;
        if (!bytes)
            return std::nullopt;
        read.value += *bytes;
    }
    return read;
}

bool fits_on_line(const std::string& value) {
    return chunk::on_one_line(value) == value && !chunk::has_all_quotes(value);
}

void write_value(chunk::Output& out, const ExtensionData::Entry& entry) {
    constexpr std::size_t bytes_a_line = 96; // 128 digits
    if (fits_on_line(entry.value)) {
        out.line(Text::made(chunk::as_word(entry.key) + " " + chunk::as_word(entry.value)));
        return;
    }
    out.begin_block(Text::made("<BIN " + chunk::as_word(entry.key)));
    for (std::size_t i = 0; i < entry.value.size(); i += bytes_a_line)
        out.line(Text::made(chunk::to_base64(std::string_view(entry.value).substr(i, bytes_a_line))));
    out.end_block(Text::literal(">"));
}

/// Writes a section: its values in the order of the file, new ones before the next greater key.
class SectionWriter {
public:
    SectionWriter(chunk::Output& out, const ExtensionData& data, const ExtensionData::Section& section)
        : out_(out), data_(data), section_(section) {
        for (const ExtensionData::Entry& entry : section.entries)
            left_.push_back(&entry);
    }

    void write(const Block* block) {
        out_.begin_block(block ? block->head : Text::made("<" + chunk::as_word(section_.name)));
        mark_present(block ? block->lines : Lines());
        for (const Node& node : block ? block->lines : Lines())
            write(node);
        write_new_before(nullptr);
        out_.end_block(block ? block->end : Text::literal(">"));
    }

private:
    void mark_present(const Lines& lines) {
        for (const Node& node : lines)
            if (const auto present = value_of(node))
                std::erase_if(left_, [&](const auto* entry) { return entry == find(present->key); });
    }

    const ExtensionData::Entry* find(const std::string& key) const {
        const std::string* value = data_.value(section_.name, key);
        const auto entry =
            std::ranges::find_if(section_.entries, [&](const auto& known) { return &known.value == value; });
        return entry == section_.entries.end() ? nullptr : &*entry;
    }

    void write(const Node& node) {
        const auto present = value_of(node);
        if (!present) {
            out_.copy(node);
            return;
        }
        write_new_before(&present->key);
        const ExtensionData::Entry* entry = find(present->key);
        if (entry && entry->value == present->value)
            out_.copy(node);
        else if (entry)
            write_value(out_, *entry);
    }

    void write_new_before(const std::string* key) {
        std::erase_if(left_, [&](const ExtensionData::Entry* entry) {
            const bool is_due = !key || entry->key < *key;
            if (is_due)
                write_value(out_, *entry);
            return is_due;
        });
    }

    chunk::Output& out_;
    const ExtensionData& data_;
    const ExtensionData::Section& section_;
    std::vector<const ExtensionData::Entry*> left_;
};

} // namespace

void read_extension_data(ExtensionData& data, const Block& block) {
    for (const Node& section : block.lines)
        if (section.block())
            for (const Node& node : section.block()->lines)
                if (auto read = value_of(node))
                    data.set(section.token(), read->key, std::move(read->value));
}

void write_extension_data(chunk::Output& out, const Block* block, const ExtensionData& data) {
    if (!block && data.sections().empty())
        return;
    std::vector<const ExtensionData::Section*> left;
    for (const ExtensionData::Section& section : data.sections())
        left.push_back(&section);
    out.begin_block(block ? block->head : Text::literal("<EXTSTATE"));
    for (const Node& node : block ? block->lines : Lines()) {
        const ExtensionData::Section* section = node.block() ? data.section(node.token()) : nullptr;
        const bool holds_values =
            node.block() && std::ranges::any_of(node.block()->lines,
                                                [](const Node& line) { return value_of(line).has_value(); });
        if (section)
            SectionWriter(out, data, *section).write(node.block());
        else if (!holds_values)
            out.copy(node);
        std::erase(left, section);
    }
    for (const ExtensionData::Section* section : left)
        SectionWriter(out, data, *section).write(nullptr);
    out.end_block(block ? block->end : Text::literal(">"));
}

} // namespace headless::rpp
