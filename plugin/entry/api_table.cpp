#include "entry/api_table.hpp"

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
#include "ride/ride.hpp"

#include <iterator>

void* __verarg_empty(void**, int) { return nullptr; }

#define MK_ROW(scope, name, names, help)                                                                     \
    extern "C" MK_EXPORT void* __vararg_##name(void** argv, int) {                                           \
        return ApiFunction<&scope::name>::vararg(argv);                                                      \
    }
#define MK_DOC_ROW(name, result, types, names, help)
#include "entry/api_rows.inc"
#undef MK_ROW
#undef MK_DOC_ROW

namespace {

#define MK_ROW_NAMES(name)                                                                                   \
    "API_MK_" #name, "APIdef_MK_" #name, "APIvararg_MK_" #name, "-API_MK_" #name, "-APIdef_MK_" #name,       \
        "-APIvararg_MK_" #name

#define MK_ROW(scope, name, names, help)                                                                     \
    {reinterpret_cast<void*>(&scope::name), reinterpret_cast<void*>(&__vararg_##name),                       \
     ApiFunction<&scope::name>::definition<names, "[MK:API]" help>(), MK_ROW_NAMES(name)},

#define MK_DOC_ROW(name, result, types, names, help)                                                         \
    {reinterpret_cast<void*>(&__verarg_empty), reinterpret_cast<void*>(&__verarg_empty),                     \
     result "\0" types "\0" names "\0[MK:API]" help, MK_ROW_NAMES(name)},

const ApiRow rows[] = {
#include "entry/api_rows.inc"
};

} // namespace

const ApiDefineList api_define_list = {rows, std::size(rows)};
