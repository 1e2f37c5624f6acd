/**
 * @file
 * The tray agent and the companion programs: finding, starting, waking and closing them.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Starts the tray agent when it is neither running (its window) nor starting (its mutex), and waits for
 * its window: up to about 5 seconds, then another half second in any case. Nothing tells whether it came
 * up. The program is "VlTray.exe" in the installation folder. Opens no trace scope of its own.
 */
VLCM_API void VlCm_StartVltrayProc(void);

/**
 * Asks the tray agent to tell @p window about its events: posts 0x4902 with the handle as wParam. Does
 * nothing when there is no agent; none is started. Opens a trace scope of its name.
 *
 * @param[in] window  the window; null or a handle that is no window: nothing is done
 */
VLCM_API void VlCm_RegisterWindowToVltray(_In_opt_ HWND window);

/**
 * Takes back VlCm_RegisterWindowToVltray(): posts 0x4903, otherwise the same. Opens a trace scope of its
 * name.
 *
 * @param[in] window  the window; null or a handle that is no window: nothing is done
 */
VLCM_API void VlCm_UnregisterWindowToVltray(_In_opt_ HWND window);

/**
 * Starts the tray agent with VlCm_StartVltrayProc(), then hands it a message through the stack's relay.
 * So the call takes seconds when the agent was absent. The relay's result is not told. Opens a trace
 * scope of its name.
 *
 * @param[in] low        lower 16 bits of the message number
 * @param[in] high       upper 16 bits of the message number
 * @param[in] parameter  its lower 32 bits reach the agent, the rest is cut off: no pointer
 */
VLCM_API void VlCm_PostMsg2Vltray(uint16_t low, uint16_t high, LPARAM parameter);

/**
 * As VlCm_PostMsg2Vltray(), inside a trace scope of its own name. The message is posted: there is no
 * answer to wait for.
 *
 * @param[in] low        lower 16 bits of the message number
 * @param[in] high       upper 16 bits of the message number
 * @param[in] parameter  its lower 32 bits reach the agent, the rest is cut off: no pointer
 *
 * @retval 0 always, also when the relay failed or the agent is absent
 */
VLCM_API LRESULT VlCm_SendMsg2Vltray(uint16_t low, uint16_t high, LPARAM parameter);

/**
 * Brings the tray agent's window to the foreground when there is one. Opens the trace scope
 * "Vlcm_SetTrayWindowToTop".
 */
VLCM_API void VlCm_SetTrayWindowToTop(void);

/**
 * Allocates memory that is handed between programs, the shell and the library (COM task allocator).
 *
 * @param[in] size  bytes
 *
 * @return the block, freed with Vlcm_SHFree(); null when there is no memory
 */
VLCM_API void* Vlcm_SHAlloc(uint32_t size);

/**
 * Frees a block of Vlcm_SHAlloc().
 *
 * @param[in] block  the block; null does nothing
 */
VLCM_API void Vlcm_SHFree(_In_opt_ void* block);

/**
 * Sets one word of a window, as SetWindowLongPtrA does.
 *
 * @param[in] window  the window
 * @param[in] index   which word: a byte offset, or a negative GWLP_ number
 * @param[in] value   the new value, extended with its sign to the width of a pointer
 *
 * @return the lower 32 bits of the previous value; 0 also on failure
 */
VLCM_API LONG Vlcm_SetWindowLong(_In_ HWND window, int index, LONG value);

/**
 * Reads one word of a window, as GetWindowLongPtrA does.
 *
 * @param[in] window  the window
 * @param[in] index   which word: a byte offset, or a negative GWLP_ number
 *
 * @return the lower 32 bits of the value; 0 also on failure
 */
VLCM_API LONG Vlcm_GetWindowLong(_In_ HWND window, int index);

/**
 * Brings the main window program forward, or starts it.
 *
 * Its window has the title of "VLUI_WINDOW_TEXT" in section "General" of the common settings file
 * (default "QVN Veltrin") and the mark 0x396 in its user data; it is sent 0x586 and lifted over all other
 * windows. When there is none, "Veltrin.exe" in the installation folder is opened. Opens the trace scope
 * "Vlcm_OpenVluiExe".
 */
VLCM_API void VlCm_OpenVluiExe(void);

/**
 * Starts the main program through the OEM's launcher: the command line that the editions 1, 2 and 4 keep
 * in the registry. Waits up to 5 seconds for the launcher to end; a launcher that does not start is not
 * told. Where key or value cannot be read, VlCm_OpenVluiExe() runs instead. For any other edition nothing
 * happens at all. Opens the trace scope "Vlcm_OpenVluiDll".
 */
VLCM_API void VlCm_OpenVluiDll(void);

/**
 * Starts the voice companion "veltrin voip.exe" when Bluetooth is ready and "SupportVOIP" in section
 * "LocalBluetooth" of the personal settings file is 1. Opens no trace scope of its own.
 */
VLCM_API void VlCm_StartUpNimbrel(void);

/**
 * Closes the voice companion when it runs: posts WM_QUIT to its window. Opens no trace scope.
 */
VLCM_API void VlCm_ShutDownNimbrel(void);

/**
 * Starts the send tool "Veltrin Quill.exe" when Bluetooth is ready and "SupportQuill" in section
 * "LocalBluetooth" of the personal settings file is 1. Opens no trace scope of its own.
 */
VLCM_API void VlCm_StartUpQuill(void);

/**
 * Closes the send tool when it runs: posts WM_QUIT to its window. Opens no trace scope.
 */
VLCM_API void VlCm_ShutDownQuill(void);

/**
 * Has the dialer call a number through a phone.
 *
 * Address and number are written to section "DialParameter" of the personal settings file, keys
 * "DeviceAddress" and "PhoneNum", where the dialer reads them when it gets 0x584. A dialer that is not
 * running is started, and a thread of the library posts the message once its window is there, within
 * about 5 seconds. Failure is not told. Opens a trace scope of its name.
 *
 * @param[in] address  the phone's address as text; null: nothing is done
 * @param[in] number   the number to call; null: nothing is done
 */
VLCM_API void VlCm_DialPhone(_In_opt_z_ const char* address, _In_opt_z_ const char* number);

/**
 * Lets a message of less privileged programs through to this process, or stops it again (Vista and
 * later). The spelling of the name is the exported one. Opens a trace scope of its name.
 *
 * @param[in] message  the message number
 * @param[in] add      TRUE: let it through; FALSE: stop it
 *
 * @return the system's answer; 1 before Vista, where there is no filter; 0 when the system lacks the
 *         function
 */
VLCM_API BOOL VlCm_ChangeMsgFiter(uint32_t message, BOOL add);

/**
 * Whether the classic file-transfer window is in use. Opens no trace scope.
 *
 * @retval FALSE always
 */
VLCM_API BOOL VlCm_IsFtpClassicUIVer(void);

/**
 * Closes the classic file-transfer window when it is in use, which it never is: see
 * VlCm_IsFtpClassicUIVer(). Opens no trace scope.
 */
VLCM_API void VlCm_CloseFtpClassicUI(void);

/**
 * Starts the connection manager: "VlMgr.exe" in the installation folder with @p value as its argument in
 * the form "0x000000ff". Failure is not told. Opens no trace scope of its own; the new process's two
 * handles stay open in the calling process.
 *
 * @param[in] value  the argument
 */
VLCM_API void VlCm_OpenConnectMgrDlg(uint32_t value);

VLCM_END
