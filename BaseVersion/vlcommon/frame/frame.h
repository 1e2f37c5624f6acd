// What every entry of the library stands on: trace scope, resource owners, stack lists, bounded text.
#pragma once

#include "bounded_text.h"
#include "counted_list.h"
#include "trace.h"
#include "unique.h"
