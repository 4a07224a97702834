#pragma once
// The bytes of one line of a project file.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace headless::chunk {

/// A line that was read from a file carries its own indent and line end and refers to the file's text. A line
/// that was made since is its own copy and has neither: it gets those of the file in which it is written.
class Text {
public:
    Text() = default;

    /// @param bytes must outlive the text and all its copies; at most 4 GiB
    static Text in_file(std::string_view bytes);

    /// @param content outlives the text, as a literal does
    static Text literal(std::string_view content);

    static Text made(std::string_view content);

    Text(const Text& other);
    Text(Text&& other) noexcept;
    Text& operator=(Text other) noexcept;
    ~Text();

    std::string_view bytes() const { return {data_, size_}; }

    /// Without the indent and the line end.
    std::string_view content() const;

    bool has_layout() const { return has_layout_; }

    /// Replaces a part of the content; indent and line end stay.
    void replace(std::size_t begin, std::size_t length, std::string_view replacement);

private:
    static Text copy_of(std::string_view bytes, bool has_layout);
    Text(const char* data, std::size_t size, bool owns, bool has_layout)
        : data_(data), size_(static_cast<std::uint32_t>(size)), owns_(owns), has_layout_(has_layout) {}

    const char* data_ = "";
    std::uint32_t size_ = 0;
    bool owns_ = false;
    bool has_layout_ = false;
};

} // namespace headless::chunk
