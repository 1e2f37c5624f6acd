/**
 * @file
 * Code pages, display limits, numbers, addresses and remote paths.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

VLCM_END
