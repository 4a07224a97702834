#pragma once
// The words of a line: blanks separate them, and quotes hold those that contain blanks. Word 0 is the line's
// token ("VOLPAN"), so word 1 is its first field.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace headless::chunk {

struct Word {
    std::string_view text; ///< without its quotes
    std::size_t begin = 0; ///< in the line, with its quotes
    std::size_t end = 0;
};

/// Walks through a line's words. A quote that is never closed includes the rest of the line. The `<` of a
/// block is not part of its token.
class Words {
public:
    /// @param line must outlive the walk
    explicit Words(std::string_view line);

    /// Empty at the end of the line.
    std::optional<Word> next();

private:
    std::string_view line_;
    std::size_t place_ = 0;
};

/// Empty if the line has fewer words.
std::optional<Word> word(std::string_view line, std::size_t number);

/// Word 0; empty for a line without words, and for free text, which begins with a bar.
std::string_view token(std::string_view line);

/// The number that the word is; empty if it is no finite number.
std::optional<double> number(std::string_view word);

/// The text with its line breaks and NULs replaced by blanks; some readers end a line at either.
std::string on_one_line(std::string_view text);

/// Whether the text has all three kinds of quote, so that no quoted word can hold it.
bool has_all_quotes(std::string_view text);

/// on_one_line(text) in quotes that do not occur in it. If all three kinds do, its backticks become
/// apostrophes.
std::string in_quotes(std::string_view text);

/// The text as a word: in quotes only where a reader needs them.
std::string as_word(std::string_view text);

/// The shortest plain decimal that reads back as the same number, in every locale; 0 for a non-finite number.
std::string decimal(double value);

} // namespace headless::chunk
