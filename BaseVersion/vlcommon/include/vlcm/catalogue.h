/**
 * @file
 * Service and device classes: their icons and string identifiers.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

VLCM_END
