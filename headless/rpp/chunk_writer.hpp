#pragma once
// The project file's syntax, written: nested blocks of lines, quoted texts, plain decimals. For use inside
// this folder.

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace headless::rpp {

/// The text in quotes that do not occur in it; when all three kinds do, its backticks become apostrophes.
/// Line breaks and other control characters become blanks, as a line cannot hold them.
std::string in_quotes(std::string_view text);

/// The shortest plain decimal that reads back as the same number, in every locale; 0 for what is no finite
/// number.
std::string decimal(double value);

/// A text that stands as it is; an empty one leaves nothing.
struct Plain {
    std::string_view text;
};

class ChunkWriter {
public:
    /// Values become: texts quoted, numbers decimals, bool 0 or 1.
    template <class... Values>
    void line(std::string_view name, const Values&... values) {
        start(name);
        (append(values), ...);
        text_ += '\n';
    }

    template <class... Values>
    void open(std::string_view name, const Values&... values) {
        start("<");
        text_ += name;
        (append(values), ...);
        text_ += '\n';
        ++depth_;
    }

    void close();

    /// An identifier in the form of the format, the next one at each call: unlike all others of this text,
    /// the same for the same text.
    std::string next_id();

    std::string take_text() { return std::move(text_); }

private:
    void start(std::string_view name);
    void append(Plain value) { append_word(value.text); }
    void append(std::string_view value) { append_word(in_quotes(value)); }
    void append(const std::string& value) { append_word(in_quotes(value)); }
    void append(const char* value) { append_word(in_quotes(value)); }
    void append(double value) { append_word(decimal(value)); }
    void append(std::integral auto value) { append_word(std::to_string(value)); }
    void append_word(std::string_view word);

    std::string text_;
    std::size_t depth_ = 0;
    std::uint32_t ids_ = 0;
};

} // namespace headless::rpp
