/**
 * @file
 * Lists handed from program to program through named shared memory.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

VLCM_END
