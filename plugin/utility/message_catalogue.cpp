#include "utility/message_catalogue.hpp"

#include "system/desktop.hpp"

namespace mk_app {

constinit std::unique_ptr<message> message_list;

const char* message::URL_SWS() const { return "https://www.sws-extension.org"; }
const char* message::SWS_PROGRAM_NAME() const { return "SWS Extension"; }

const char* message_en::ERROR_TITLE() const { return mk_app_def::PROGRAM_NAME; }
const char* message_en::MSG_DEPENDENCY_ERROR() const {
    return "To use %s, you need to install %s.\nPlease refer to the URL below for details.\n\n%s\n\n"
           "Would you like to open the URL?";
}
const char* message_en::MSG_FAIL_LOAD_REAPER_EXTENSION() const { return "Failed to load function."; }

const char* message_jp::ERROR_TITLE() const { return mk_app_def::PROGRAM_NAME; }
const char* message_jp::MSG_DEPENDENCY_ERROR() const {
    return "%sを使用するためには%sのインストールが必要です。\n詳細は下記URLを参照ください。\n\n%s\n\n"
           "URLを開きますか？";
}
const char* message_jp::MSG_FAIL_LOAD_REAPER_EXTENSION() const { return "関数の読み込みに失敗しました。"; }

void message_util::set_localize() {
    if (desktop::locale_name() == "ja_JP")
        message_list = std::make_unique<message_jp>();
    else
        message_list = std::make_unique<message_en>();
}

} // namespace mk_app
