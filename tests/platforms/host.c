/* A stand-in for the workstation, in C: loads the plug-in from its file, registers its functions, calls them as scripts
   and other plug-ins do, and unloads it. What a C++ compiler would lay out, this file lays out by hand.

   host PLUGIN ROWS    ROWS lists the registered functions as tests/plugin/entry/rows.txt does. Writes into the current
                       folder. The last line counts the checks; the exit status is 1 if one failed. */

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#pragma GCC diagnostic ignored "-Wpedantic" /* functions come as void* */

#ifdef _WIN32
#include <windows.h>
#define DESTRUCTOR_SLOTS 1 /* of an object that MSVC has compiled */
static void* load(const char* file) { return (void*)LoadLibraryA(file); }
static void* symbol(void* library, const char* name) { return (void*)GetProcAddress((HMODULE)library, name); }
static void unload(void* library) { FreeLibrary((HMODULE)library); }
static FILE* open_file(const wchar_t* name, const char* utf8) {
    (void)utf8;
    return _wfopen(name, L"rb");
}
#else
#include <dlfcn.h>
#include <wchar.h>
#define DESTRUCTOR_SLOTS 2
static void* load(const char* file) {
    void* library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    if (!library)
        fprintf(stderr, "%s\n", dlerror());
    return library;
}
static void* symbol(void* library, const char* name) { return dlsym(library, name); }
static void unload(void* library) { dlclose(library); }
static FILE* open_file(const wchar_t* name, const char* utf8) {
    (void)name;
    return fopen(utf8, "rb");
}
#endif

static int passed, failed;
#define CHECK(condition) check((condition), #condition, __LINE__)

static void check(bool holds, const char* condition, int line) {
    ++*(holds ? &passed : &failed);
    if (!holds)
        printf("%s:%d: %s\n", __FILE__, line, condition);
}

/* The objects of the host: two tracks, an item with a take, and the take's source. */

struct track {
    double mute, volume;
    char name[64];
};
static struct track tracks[2];

static char item, take;

struct source {
    void (*const* functions)(void);
};

static void wrong_slot(void) {
    puts("The plug-in called a wrong slot of the source");
    exit(1);
}

static const char* file_name_of_source(struct source* self);
static void (*const source_functions[])(void) = {
    wrong_slot, /* destructor */
#if DESTRUCTOR_SLOTS == 2
    wrong_slot,
#endif
    wrong_slot, /* Duplicate */
    wrong_slot, /* IsAvailable */
    wrong_slot, /* SetAvailable */
    wrong_slot, /* GetType */
    (void (*)(void))file_name_of_source,
    wrong_slot, /* SetFileName */
    wrong_slot, wrong_slot};
static struct source source = {source_functions};

static const char* file_name_of_source(struct source* self) { return self == &source ? "./source.name.wav" : NULL; }

/* The functions of the host. */

static int count_tracks(void* project) { return project ? 0 : 2; }
static int count_selected_tracks(void* project, bool with_master) { return !project && with_master ? 1 : 0; }
static struct track* get_track(void* project, int index) {
    return !project && (index == 0 || index == 1) ? &tracks[index] : NULL;
}
static struct track* get_selected_track(void* project, int index) { return get_track(project, index + 1); }

static double* track_value(struct track* track, const char* key) {
    static double none;
    if (track && strcmp(key, "B_MUTE") == 0)
        return &track->mute;
    return track && strcmp(key, "D_VOL") == 0 ? &track->volume : &none;
}
static double get_track_value(struct track* track, const char* key) { return *track_value(track, key); }
static bool set_track_value(struct track* track, const char* key, double value) {
    *track_value(track, key) = value;
    return track != NULL;
}
static bool get_track_name(struct track* track, char* name, int size) {
    return track && snprintf(name, (size_t)size, "%s", track->name) >= 0;
}
static bool track_string(struct track* track, const char* key, char* text, bool sets) {
    if (!track || strcmp(key, "P_NAME") != 0 || !sets)
        return false;
    snprintf(track->name, sizeof track->name, "%s", text);
    return true;
}
static void* get_take(void* of_item, int index) { return of_item == &item && index == 0 ? &take : NULL; }
static struct source* get_source(void* of_take) { return of_take == &take ? &source : NULL; }
static void update_arrange(void) {}
static const char* get_version_of_host(void) { return "7.01/x64"; }
static char told[256];
static void show_in_console(const char* text) { snprintf(told, sizeof told, "%s", text); }

/* Registration: three names for each row, in order. */

struct registration {
    char name[128];
    void* payload;
};
static struct registration registrations[1024];
static size_t registered;

static int plugin_register(const char* name, void* payload) {
    if (registered < sizeof registrations / sizeof *registrations) {
        struct registration* next = &registrations[registered++];
        snprintf(next->name, sizeof next->name, "%s", name);
        next->payload = payload;
    }
    return 1;
}

static void* get_func(const char* name) {
    static const struct {
        const char* name;
        void (*function)(void);
    } functions[] = {{"plugin_register", (void (*)(void))plugin_register},
                     {"CountTracks", (void (*)(void))count_tracks},
                     {"CountSelectedTracks2", (void (*)(void))count_selected_tracks},
                     {"GetTrack", (void (*)(void))get_track},
                     {"GetSelectedTrack", (void (*)(void))get_selected_track},
                     {"GetMediaTrackInfo_Value", (void (*)(void))get_track_value},
                     {"SetMediaTrackInfo_Value", (void (*)(void))set_track_value},
                     {"GetTrackName", (void (*)(void))get_track_name},
                     {"GetSetMediaTrackInfo_String", (void (*)(void))track_string},
                     {"GetTake", (void (*)(void))get_take},
                     {"GetMediaItemTake_Source", (void (*)(void))get_source},
                     {"UpdateArrange", (void (*)(void))update_arrange},
                     {"GetAppVersion", (void (*)(void))get_version_of_host},
                     {"ShowConsoleMsg", (void (*)(void))show_in_console}};
    for (size_t i = 0; i < sizeof functions / sizeof *functions; ++i)
        if (strcmp(name, functions[i].name) == 0)
            return (void*)functions[i].function;
    return NULL;
}

struct plugin_info {
    int caller_version;
    void* window;
    int (*plugin_register)(const char*, void*);
    void* (*get_func)(const char*);
};

static bool is_registered_at(size_t index, const char* prefix, const char* row) {
    const char* name = index < registered ? registrations[index].name : "";
    return strncmp(name, prefix, strlen(prefix)) == 0 && strcmp(name + strlen(prefix), row) == 0 &&
           registrations[index].payload;
}

/* A line of the list: name, then the four parts of the definition text, separated by "|". */
static void check_row(size_t row, char* line) {
    line[strcspn(line, "\r\n")] = '\0';
    char* const definition = strchr(line, '|') + 1;
    definition[-1] = '\0';
    const size_t size = strlen(definition) + 1;
    for (char* separator = definition; (separator = strchr(separator, '|'));)
        *separator++ = '\0';
    if (!is_registered_at(3 * row, "API_", line) || !is_registered_at(3 * row + 1, "APIdef_", line) ||
        !is_registered_at(3 * row + 2, "APIvararg_", line) ||
        memcmp(registrations[3 * row + 1].payload, definition, size) != 0) {
        printf("not registered as it should be: %s\n", line);
        ++failed;
    } else
        ++passed;
}

static void check_rows(const char* list) {
    char line[4096];
    size_t rows = 0;
    FILE* file = fopen(list, "rb");
    CHECK(file != NULL);
    while (file && fgets(line, sizeof line, file))
        check_row(rows++, line);
    CHECK(rows == 105 && registered == 3 * rows);
    if (file)
        fclose(file);
}

static void check_withdrawal(size_t rows) {
    CHECK(registered == 2 * rows);
    for (size_t i = 0; i < rows && registered == 2 * rows; ++i) {
        const struct registration *added = &registrations[i], *removed = &registrations[rows + i];
        CHECK(removed->name[0] == '-' && strcmp(removed->name + 1, added->name) == 0 &&
              removed->payload == added->payload);
    }
}

static void* function(const char* name) {
    for (size_t i = 0; i < registered; ++i)
        if (strcmp(registrations[i].name, name) == 0)
            return registrations[i].payload;
    printf("There is no %s\n", name);
    exit(1);
}

typedef void* Adapter(void** arguments, int count);

static uintptr_t call(const char* name, void* first, void* second, void* third, void* fourth, void* fifth) {
    void* arguments[] = {first, second, third, fourth, fifth};
    return (uintptr_t)((Adapter*)function(name))(arguments, 5);
}

static void* number(intptr_t value) { return (void*)value; }

static void check_tracks(void) {
    bool mute = true;
    double volume = -6.0;
    int count = -1;
    char name[64] = "";
    tracks[0] = tracks[1] = (struct track){0.0, 1.0, "one"};
    CHECK(!((bool (*)(void*, int, bool*))function("API_MK_GetTrackIdMute"))(NULL, 1, &mute) && !mute); /* off: both */
    CHECK(((bool (*)(void*, bool))function("API_MK_SetTrackItemMute"))(&tracks[1], true) && tracks[1].mute == 1.0);
    CHECK(call("APIvararg_MK_GetTrackIdMute", NULL, number(1), &mute, NULL, NULL) == 1 && mute);
    CHECK(call("APIvararg_MK_GetTrackIdMute", NULL, number(-1), &mute, NULL, NULL) == 0);
    CHECK(call("APIvararg_MK_GetTrackCountSelect", NULL, number(1), &count, NULL, NULL) == 1 && count == 1);
    CHECK(call("APIvararg_MK_GetTrackItemSelect", NULL, number(1), number(0), NULL, NULL) == (uintptr_t)&tracks[1]);
    CHECK(call("APIvararg_MK_SetTrackItemVolume", &tracks[0], &volume, NULL, NULL, NULL) == 1);
    CHECK(tracks[0].volume > 0.50118 && tracks[0].volume < 0.50119);
    CHECK(((bool (*)(void*, int, double*))function("API_MK_GetTrackIdVolume"))(NULL, 0, &volume) && volume == -6.0);
    CHECK(call("APIvararg_MK_SetTrackIdName", NULL, number(0), "\xE5\x8F\xB0 \xC3\xA9", NULL, NULL) == 1);
    CHECK(call("APIvararg_MK_GetTrackItemName", &tracks[0], name, number(6), NULL, NULL) == 1);
    CHECK(strcmp(name, "\xE5\x8F\xB0 \xC3") == 0);
}

static void check_texts(void) {
    char text[32] = "";
    bool is_same = false;
    CHECK(call("APIvararg_MK_CheckSameString", "Anna_\xC3\xA9", "aNNA_\xC3\xA9", &is_same, NULL, NULL) == 1 && is_same);
    CHECK(call("APIvararg_MK_ReplaceSearchString", "line_12.wav", "(\\d+)(?=\\.wav)", "<$1>", text, number(32)) == 1);
    CHECK(strcmp(text, "line_<12>.wav") == 0);
    CHECK(call("APIvararg_MK_ReplaceSearchString", "aaaa", "(", "", text, number(32)) == 0);
    CHECK(call("APIvararg_MK_FormatNumDigit", number(-7), number(4), text, number(32), NULL) == 1);
    CHECK(strcmp(text, "-0007") == 0);
    int drawn = 0;
    CHECK(call("APIvararg_MK_GetRandomNumInteger", number(5), number(5), &drawn, NULL, NULL) == 1 && drawn == 5);
    for (int i = 0; i < 100; ++i) {
        call("APIvararg_MK_GetRandomNumInteger", number(-2), number(3), &drawn, NULL, NULL);
        CHECK(drawn >= -2 && drawn <= 3);
    }
}

static void check_files(void) {
    static const char name[] = "\xE5\x8F\xB0\xE8\xA9\x9E \xC3\xA9.txt";
    static const char text[] = "one\ntwo\xE6\x97\xA5\n";
    char buffer[64] = "";
    CHECK(call("APIvararg_MK_WriteFile", ".", (void*)name, (void*)text, number(0), NULL) == 1);
    CHECK(call("APIvararg_MK_ReadFile", ".", (void*)name, buffer, number(64), NULL) == 1 && strcmp(buffer, text) == 0);
    FILE* file = open_file(L"\x53F0\x8A5E \x00E9.txt", name); /* under its own name, with its own bytes */
    CHECK(file != NULL);
    if (file) {
        const size_t size = fread(buffer, 1, sizeof buffer, file);
        CHECK(size == strlen(text) && memcmp(buffer, text, size) == 0);
        fclose(file);
    }
}

static void check_source(void* library) {
    typedef int GetSourceName(void* of_item, int take_index, bool without_extension, char* name, int size);
    GetSourceName* get_name = (GetSourceName*)symbol(library, "_ZN6mk_api9mediaItem13GetSourceNameEP9MediaItemibPci");
    char name[64] = "unwritten";
    CHECK(get_name != NULL);
    fclose(fopen("source.name.wav", "wb"));
    CHECK(get_name && get_name(&item, 0, false, name, 64) == 0 && strcmp(name, "source.name.wav") == 0);
    CHECK(get_name && get_name(&item, 0, true, name, 64) == 0 && strcmp(name, "source.name") == 0);
    CHECK(get_name && get_name(&item, 1, true, name, 64) == 0 && strcmp(name, "") == 0);
}

/* The host's Lua is newer, and does not show: a state of it must not be touched. */
static void check_newer_lua(void* library) {
    static const char untouched[1024];
    char state[sizeof untouched] = {0};
    int (*open_module)(void*) = (int (*)(void*))symbol(library, "luaopen_reaper_MERIDEK_FELSPAR");
    told[0] = '\0';
    CHECK(open_module && open_module(state) == 0);
    CHECK(memcmp(state, untouched, sizeof state) == 0 && strstr(told, "needs Lua 5.3; this workstation has a newer one"));
}

static void check_library(const char* file, const char* list) {
    void* library = load(file);
    typedef int Entry(void* instance, struct plugin_info* info);
    Entry* entry = library ? (Entry*)symbol(library, "ReaperPluginEntry") : NULL;
    CHECK(entry != NULL);
    if (!entry)
        return;
    struct plugin_info info = {0x20E, NULL, plugin_register, get_func};
    char version[16] = "";
    registered = 0;
    CHECK(entry(library, &info) == 1);
    check_rows(list);
    check_tracks();
    check_texts();
    check_files();
    check_source(library);
    check_newer_lua(library);
    void (*get_version)(char*, int) = (void (*)(char*, int))symbol(library, "get_version");
    CHECK(get_version != NULL);
    if (get_version)
        get_version(version, sizeof version);
    CHECK(version[0] >= '0' && version[0] <= '9');
    const size_t rows = registered;
    CHECK(entry(library, NULL) == 0);
    check_withdrawal(rows);
    unload(library);
}

int main(int argc, char** argv) {
    if (argc != 3) {
        fprintf(stderr, "Usage: host PLUGIN ROWS\n");
        return 2;
    }
    for (int times = 3; times > 0; --times) /* again after it was unloaded */
        check_library(argv[1], argv[2]);
    printf("%d passed, %d failed\n", passed, failed);
    return failed ? 1 : 0;
}
