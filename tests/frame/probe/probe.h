// A DLL that the delay-load tests bind late: arguments of every kind, and functions that are missing.
#pragma once

#ifndef PROBE_API
#define PROBE_API
#endif

extern "C" {
PROBE_API double probe_mix(double a, int b, float c, long long d, double e);
PROBE_API double probe_turned(int a, double b, long long c, float d);
PROBE_API int probe_add(int a, int b);
PROBE_API unsigned long probe_last_error();
PROBE_API int race_probe_add(int a, int b);

int probe_missing(int a);  // delay_probe.dll lacks it
int absent_probe(int a);   // absent_probe.dll does not exist
}
