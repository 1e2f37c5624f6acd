/**
 * @file
 * Local and remote devices and their services.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Whether a remote device offers a service: it has a connection shortcut of that class, or one of its
 * known services has the class.
 *
 * @param[in] device        device handle; 0 gives FALSE
 * @param[in] serviceClass  Bluetooth service class
 *
 * @retval TRUE   the service is offered
 * @retval FALSE  it is not known, or the services cannot be enumerated
 */
VLCM_API BOOL VlCm_IsSupportService(unsigned int device, unsigned short serviceClass);

VLCM_END
