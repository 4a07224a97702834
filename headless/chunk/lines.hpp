#pragma once
// The lines and blocks of a project file, in their order. The lines of an object of the model lie in that
// object; where it stood in the file remains a place.

#include "headless/chunk/text.hpp"
#include "headless/chunk/words.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace headless::chunk {

inline constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

enum class ObjectKind : std::uint8_t { track, item, envelope, marker };

/// Where the lines of an object stand among those of the object that it belongs to.
struct Place {
    std::uint64_t serial = 0; ///< of the object; unique among those of its kind in a project
    ObjectKind kind = ObjectKind::track;

    bool operator==(const Place&) const = default;
};

struct Block;

/// A line, a block, or the place of an object.
class Node {
public:
    Node(Text line) : content_(std::move(line)) {}
    Node(Block block);
    Node(Place place) : content_(place) {}
    Node(const Node& other);
    Node(Node&& other) noexcept = default;
    Node& operator=(const Node& other);
    Node& operator=(Node&& other) noexcept = default;
    ~Node();

    /// Null for the other kinds.
    const Text* line() const { return std::get_if<Text>(&content_); }
    Text* line() { return std::get_if<Text>(&content_); }
    const Block* block() const;
    Block* block();
    const Place* place() const { return std::get_if<Place>(&content_); }

    /// Of a line or a block; empty for a place.
    std::string_view token() const;

private:
    std::variant<Text, std::unique_ptr<Block>, Place> content_;
};

using Lines = std::vector<Node>;

/// "<NAME ..." to ">".
struct Block {
    Text head;
    Lines lines;
    Text end = Text::literal(">");
};

/// The first line with that token; null if there is none.
const Text* find_line(const Lines& lines, std::string_view token);
Text* find_line(Lines& lines, std::string_view token);

/// The first block with that token; null if there is none.
const Block* find_block(const Lines& lines, std::string_view token);
Block* find_block(Lines& lines, std::string_view token);

/// Removes all lines and blocks with that token.
void erase(Lines& lines, std::string_view token);

/// The text of word `number` of the line, without quotes; `otherwise` if the line has fewer words.
std::string_view text_at(const Text& line, std::size_t number, std::string_view otherwise = {});

/// As text_at, as a number; `otherwise` also for a word that is no finite number.
double number_at(const Text& line, std::size_t number, double otherwise);

/// The text as a word: in quotes if the line's word `number` is, or if it needs them.
std::string in_form_of(const Text& line, std::size_t number, std::string_view text);

/// Replaces word `number`, whose form (bare or quoted) is `word`. A line that is too short gets the words
/// between from `defaults`, a line of the same token, or zeros where that is too short as well.
void set_word(Text& line, std::size_t number, std::string_view word, std::string_view defaults = {});

} // namespace headless::chunk
