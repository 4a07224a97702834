#include "utf8_names.h"

#include <errno.h>
#include <wchar.h>

/* The text in UTF-16, to be freed; NULL, with errno, if it is not UTF-8 or there is no memory. */
static wchar_t *wide(const char *text) {
    const int length = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, NULL, 0);
    wchar_t *result = length > 0 ? malloc((size_t)length * sizeof *result) : NULL;
    if (result)
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, text, -1, result, length);
    else
        errno = length > 0 ? ENOMEM : EILSEQ;
    return result;
}

/* free() may set errno, which the caller is to see. */
static void release(wchar_t *first, wchar_t *second) {
    const int error = errno;
    free(first);
    free(second);
    errno = error;
}

FILE *utf8_fopen(const char *name, const char *mode) {
    wchar_t *wide_name = wide(name), *wide_mode = wide(mode);
    FILE *file = wide_name && wide_mode ? _wfopen(wide_name, wide_mode) : NULL;
    release(wide_name, wide_mode);
    return file;
}

/* As the C library's, it closes the file also when it fails. */
FILE *utf8_freopen(const char *name, const char *mode, FILE *file) {
    wchar_t *wide_name = wide(name), *wide_mode = wide(mode);
    FILE *opened = NULL;
    if (wide_name && wide_mode)
        opened = _wfreopen(wide_name, wide_mode, file);
    else
        fclose(file);
    release(wide_name, wide_mode);
    return opened;
}

FILE *utf8_popen(const char *command, const char *mode) {
    wchar_t *wide_command = wide(command), *wide_mode = wide(mode);
    FILE *file = wide_command && wide_mode ? _wpopen(wide_command, wide_mode) : NULL;
    release(wide_command, wide_mode);
    return file;
}

int utf8_remove(const char *name) {
    wchar_t *wide_name = wide(name);
    const int status = wide_name ? _wremove(wide_name) : -1;
    release(wide_name, NULL);
    return status;
}

int utf8_rename(const char *name, const char *new_name) {
    wchar_t *wide_name = wide(name), *wide_new_name = wide(new_name);
    const int status = wide_name && wide_new_name ? _wrename(wide_name, wide_new_name) : -1;
    release(wide_name, wide_new_name);
    return status;
}

/* Without a command it tells whether there is a shell. */
int utf8_system(const char *command) {
    wchar_t *wide_command = command ? wide(command) : NULL;
    const int status = command && !wide_command ? -1 : _wsystem(wide_command);
    release(wide_command, NULL);
    return status;
}

/* In UTF-16, to be freed; NULL if there is no such variable or no memory. */
static wchar_t *wide_value(const wchar_t *name) {
    const DWORD length = GetEnvironmentVariableW(name, NULL, 0);
    wchar_t *value = length > 0 ? malloc(length * sizeof *value) : NULL;
    /* Another thread may have made it longer. */
    if (value && GetEnvironmentVariableW(name, value, length) >= length) {
        free(value);
        return NULL;
    }
    return value;
}

char *utf8_getenv(const char *name) {
    static __thread char *result = NULL;
    wchar_t *wide_name = wide(name), *value = wide_name ? wide_value(wide_name) : NULL;
    free(result);
    result = NULL;
    if (value) {
        const int length = WideCharToMultiByte(CP_UTF8, 0, value, -1, NULL, 0, NULL, NULL);
        result = malloc((size_t)length);
        if (result)
            WideCharToMultiByte(CP_UTF8, 0, value, -1, result, length, NULL, NULL);
    }
    release(wide_name, value);
    return result;
}

HMODULE utf8_load_library(const char *name, HANDLE file, DWORD flags) {
    wchar_t *wide_name = wide(name);
    HMODULE library = wide_name ? LoadLibraryExW(wide_name, file, flags) : NULL;
    const DWORD error = wide_name ? GetLastError() : ERROR_INVALID_NAME;
    free(wide_name);
    SetLastError(error);
    return library;
}
