// What a library shows to others. BODYLNK_BUILD is defined while BODYLNK itself is compiled,
// MODULE_IMPORT in what is linked with the module's import library.
#pragma once

#ifdef _WIN32
#ifdef MODULE_IMPORT
#define MODULE_API __declspec(dllimport)
#else
#define MODULE_API __declspec(dllexport)
#endif
#ifdef BODYLNK_BUILD
#define BODYLNK_API __declspec(dllexport)
#else
#define BODYLNK_API __declspec(dllimport)
#endif
#else
#define MODULE_API __attribute__((visibility("default")))
#define BODYLNK_API __attribute__((visibility("default")))
#endif

// Exports a function under another name alone. On Windows the module-definition file does it.
#ifdef _WIN32
#define MODULE_API_RENAMED
#define MODULE_EXPORT_AS(function, name) static_assert(true)
#else
#define MODULE_API_RENAMED MODULE_API
#define MODULE_EXPORT_AS(function, name) __asm__(".symver " #function "," name ",remove")
#endif
