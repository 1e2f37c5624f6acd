#define PROBE_API __declspec(dllexport)
#include "probe.h"

#include <windows.h>

double probe_mix(double a, int b, float c, long long d, double e) {
    return a + 10 * b + 100 * static_cast<double>(c) + 1000 * static_cast<double>(d) + 10000 * e;
}
double probe_turned(int a, double b, long long c, float d) {
    return a + 10 * b + 100 * static_cast<double>(c) + 1000 * static_cast<double>(d);
}
int probe_add(int a, int b) { return a + b; }
unsigned long probe_last_error() { return GetLastError(); }
int race_probe_add(int a, int b) { return a + b; }
