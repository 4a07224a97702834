/* Stands before Lua's sources: names of files and commands and the environment are UTF-8, as they are on other systems.
   The C library takes them for the system's code page, which most of them have no form in. */
#ifndef FELSPAR_UTF8_NAMES_H
#define FELSPAR_UTF8_NAMES_H

#include <stdio.h>
#include <stdlib.h>
#include <windows.h>
#undef LoadString /* Lua has one of its own */

FILE *utf8_fopen(const char *name, const char *mode);
FILE *utf8_freopen(const char *name, const char *mode, FILE *file);
FILE *utf8_popen(const char *command, const char *mode);
int utf8_remove(const char *name);
int utf8_rename(const char *name, const char *new_name);
int utf8_system(const char *command);
/* The value belongs to the thread, until it asks for the next. */
char *utf8_getenv(const char *name);
HMODULE utf8_load_library(const char *name, HANDLE file, DWORD flags);

#define fopen utf8_fopen
#define freopen utf8_freopen
#define _popen utf8_popen
#define remove utf8_remove
#define rename utf8_rename
#define system utf8_system
#define getenv utf8_getenv
#define LoadLibraryExA utf8_load_library

#endif
