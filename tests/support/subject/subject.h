// A little DLL for the kit to watch: it leaks, balances, waits and asks on demand.
#pragma once

#include <windows.h>

#ifndef SUBJECT_API
#define SUBJECT_API __declspec(dllimport)
#endif

extern "C" {
// One leak of each kind of memory; they answer what they took.
SUBJECT_API void* subject_leak_block();
SUBJECT_API void* subject_leak_object();
SUBJECT_API void* subject_leak_heap_block();
SUBJECT_API void* subject_leak_task_block();
SUBJECT_API void* subject_leak_local_block();
SUBJECT_API void* subject_leak_global_block();
SUBJECT_API void* subject_leak_string();
SUBJECT_API void* subject_leak_view(HANDLE section);
SUBJECT_API HMODULE subject_leak_module();
SUBJECT_API HMODULE subject_leak_system_module();
SUBJECT_API HANDLE subject_leak_event();
SUBJECT_API void subject_leak_window();
SUBJECT_API void subject_destroy_window();
SUBJECT_API void subject_free_block(void* block);

SUBJECT_API void subject_balanced_blocks();
SUBJECT_API void subject_balanced_other_memory();
SUBJECT_API void subject_balanced_handles();
SUBJECT_API BOOL subject_allocation_works();

SUBJECT_API DWORD subject_ticks();
SUBJECT_API BOOL subject_is_relative(const wchar_t* path);
SUBJECT_API DWORD subject_resolved_at_run_time();
SUBJECT_API BOOL subject_delete_file(const char* path);
SUBJECT_API void subject_wait(DWORD length_ms, DWORD times);
SUBJECT_API void subject_say();
SUBJECT_API int subject_ask();
}
