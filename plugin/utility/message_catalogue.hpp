#pragma once
// The messages that a user may see, in English and Japanese, and the choice of language at load.

#include <memory>

namespace mk_app_def {

inline constexpr const char* PROGRAM_NAME = "MERIDEK_FELSPAR";
/// The version of the interface for hosts and scripts, which `get_version` tells them. It stays while the
/// interface does; `felspar_version` is the release's.
inline constexpr const char* VERSION = "1.1.0";

} // namespace mk_app_def

namespace mk_app {

/// The catalogue. All texts are UTF-8 constants.
class message {
public:
    virtual const char* URL_SWS() const;
    virtual const char* ERROR_TITLE() const = 0;
    virtual const char* SWS_PROGRAM_NAME() const;
    /// A template with three `%s`: the operation, the extension it needs, the extension's web address.
    virtual const char* MSG_DEPENDENCY_ERROR() const = 0;
    virtual const char* MSG_FAIL_LOAD_REAPER_EXTENSION() const = 0;
    virtual ~message() = default;
};

class message_en final : public message {
public:
    const char* ERROR_TITLE() const override;
    const char* MSG_DEPENDENCY_ERROR() const override;
    const char* MSG_FAIL_LOAD_REAPER_EXTENSION() const override;
};

class message_jp final : public message {
public:
    const char* ERROR_TITLE() const override;
    const char* MSG_DEPENDENCY_ERROR() const override;
    const char* MSG_FAIL_LOAD_REAPER_EXTENSION() const override;
};

/// The current catalogue; null until the library is entered.
extern std::unique_ptr<message> message_list;

namespace message_util {

/// Sets `message_list` to the catalogue for the user's locale: Japanese for exactly `ja_JP`, otherwise
/// English.
void set_localize();

} // namespace message_util

} // namespace mk_app
