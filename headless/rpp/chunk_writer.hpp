#pragma once
// Writes the syntax of the project file: nested blocks of lines, quoted strings, plain decimals. For use
// inside this folder.

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace headless::rpp {

/// The text with its line breaks and NULs replaced by blanks; some readers end a line at either.
std::string on_one_line(std::string_view text);

/// on_one_line(text) in quotes that do not occur in it. If all three kinds do, its backticks become
/// apostrophes.
std::string in_quotes(std::string_view text);

/// The shortest plain decimal that reads back as the same number, in every locale; 0 for a non-finite number.
std::string decimal(double value);

/// A text that is written unquoted; an empty one writes nothing.
struct Plain {
    std::string_view text;
};

class ChunkWriter {
public:
    /// Strings are written quoted, numbers as decimals, bool as 0 or 1.
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

    /// Writes a name. A name with all three kinds of quote is written twice, as newer workstations do:
    /// changed in its line, and unchanged in a block after it.
    void name(std::string_view text);

    /// Returns the next identifier in the form that the format uses. It is unique within this text, and the
    /// same text always gets the same identifiers.
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
