/**
 * @file
 * How the simulated stack reaches the tray agent: the stack's half of the message relay.
 *
 * Btsdk_PostMessageToCtrlCenter() finds the agent's window by its title and posts one window message.
 * A tray agent that is to be reached makes a top-level window of this title and answers this message.
 */
#pragma once

#include <windows.h>

/** Title of the tray agent's hidden main window. */
#define VLSIM_TRAY_WINDOW_TITLE "{4E5A3D3C-E110-4DEF-A6CF-CB537A8C3BC0}"

/** The relay's window message: wParam is the relayed 32-bit message, lParam its 32-bit parameter. */
#define VLSIM_RELAY_MESSAGE (WM_APP + 0x49)
