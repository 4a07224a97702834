#include "tests/plugin/entry/native_calls.hpp"

#include "api/media/actions.hpp"
#include "api/media/loudness.hpp"
#include "api/project/dialogs.hpp"
#include "api/project/files.hpp"
#include "api/project/folders.hpp"
#include "api/project/random_numbers.hpp"
#include "api/project/regions.hpp"
#include "api/project/strings.hpp"
#include "api/track/lookup.hpp"
#include "api/track/state.hpp"
#include "api/track/tree.hpp"
#include "api/track/volume_name.hpp"
#include "entry/api_row.hpp"
#include "entry/api_table.hpp"
#include "ride/ride.hpp"

namespace {

template <class Function>
struct Native;

template <class R, class... A>
struct Native<R (*)(A...)> {
    static void call(void* address, void** words) {
        [&]<std::size_t... I>(std::index_sequence<I...>) {
            static_cast<void>(
                reinterpret_cast<R (*)(A...)>(address)(definition_text::decode_argument<A>(words[I])...));
        }
        (std::index_sequence_for<A...>{});
    }
};

#define MK_ROW(scope, name, names, help) &Native<decltype(&scope::name)>::call,
#define MK_DOC_ROW(name, result, types, names, help) &Native<decltype(&__verarg_empty)>::call,

mk_test::NativeCall* const calls[] = {
#include "entry/api_rows.inc"
};

} // namespace

std::span<mk_test::NativeCall* const> mk_test::native_calls() { return calls; }
