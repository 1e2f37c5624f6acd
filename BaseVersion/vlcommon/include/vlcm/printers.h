/**
 * @file
 * Bluetooth printers: which Windows printer stands for which device, their jobs, installation and removal.
 *
 * The printer file, "VLPRINT.INI" in the folder "SysWow64" of the Windows folder, ties printer ports to
 * devices (section of the port's name, key "BD_ADDR") and devices to the records of their printers. It is
 * read anew at each call. Printers, ports and jobs are those of the local print spooler.
 *
 * A name that ends in New does the same as the name without it, but reads the printer file through Windows'
 * profile functions instead of the stack's.
 *
 * Every enumeration of the spooler opens a trace scope ("MyEnumPrinter", "MyEnumJobs", "MyEnumPorts") and
 * traces its answers. What fails answers 0 unless said otherwise; nothing is shown to the user. Addresses
 * are 6 bytes, least significant first; names are text in the ANSI code page.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/** The Windows printer that stands for a device. Texts are cut at 259 bytes. */
typedef struct VlPrinterRecord {
    char printerName[260];    /**< Name in the spooler. */
    char driverName[260];     /**< Driver. */
    char portName[260];       /**< Port, "BT1:" for instance. */
    char printProcessor[260]; /**< Print processor, "WinPrint" for instance. */
} VlPrinterRecord;
VLCM_CHECK(sizeof(VlPrinterRecord) == 1040, "size");
VLCM_CHECK(offsetof(VlPrinterRecord, printerName) == 0, "offset");
VLCM_CHECK(offsetof(VlPrinterRecord, driverName) == 260, "offset");
VLCM_CHECK(offsetof(VlPrinterRecord, portName) == 520, "offset");
VLCM_CHECK(offsetof(VlPrinterRecord, printProcessor) == 780, "offset");

/**
 * Whether a printer port leads to a Bluetooth device: the printer file names one for it. Opens the trace
 * scope "hlp_IsBTPort"; the answer is traced.
 *
 * @param[in] port  port name; null gives FALSE
 *
 * @retval TRUE   it does
 * @retval FALSE  it does not, or the file cannot be read
 */
VLCM_API BOOL VlCm_IsBTPort(_In_opt_z_ const char* port);

/**
 * As VlCm_IsBTPort(), through Windows' profile functions.
 *
 * @param[in] port  port name; null gives FALSE
 *
 * @retval TRUE   it does
 * @retval FALSE  it does not, or the file cannot be read
 */
VLCM_API BOOL VlCm_IsBTPortNew(_In_opt_z_ const char* port);

/**
 * Whether any printer on a Bluetooth port has a job. Such a printer that cannot be opened is traced and
 * counts as idle.
 *
 * @retval TRUE   one has
 * @retval FALSE  none has, or the spooler does not answer
 */
VLCM_API BOOL VlCm_IsBtPortBusy(void);

/**
 * As VlCm_IsBtPortBusy(), through Windows' profile functions.
 *
 * @retval TRUE   one has
 * @retval FALSE  none has, or the spooler does not answer
 */
VLCM_API BOOL VlCm_IsBtPortBusyNew(void);

/**
 * Whether a printer has at least one job. Opens the trace scope "hlp_IsPrinterBusy".
 *
 * @param[in] printer  open printer handle; 0 is asked like any other
 *
 * @retval TRUE   it has
 * @retval FALSE  it has none, or the spooler does not answer
 */
VLCM_API BOOL VlCm_IsPrinterBusy(_In_opt_ HANDLE printer);

/**
 * As VlCm_IsPrinterBusy(); it reads no settings, so the two are the same.
 *
 * @param[in] printer  open printer handle; 0 is asked like any other
 *
 * @retval TRUE   it has
 * @retval FALSE  it has none, or the spooler does not answer
 */
VLCM_API BOOL VlCm_IsPrinterBusyNew(_In_opt_ HANDLE printer);

/**
 * Cancels all jobs of all printers on Bluetooth ports, and waits until they are gone: a look each second,
 * without a limit, so a job that never ends keeps the caller for ever. Printers that cannot be opened are
 * passed over. Opens the trace scope "CancelJobs".
 *
 * @retval FALSE  all printers were handled; also when there is no memory or the spooler does not answer
 * @retval TRUE   a printer could not be read while it had jobs; the printers behind it were not handled.
 *                Mind the sense
 */
VLCM_API BOOL VlCm_DoCancelAllPrintJob(void);

/**
 * As VlCm_DoCancelAllPrintJob(), through Windows' profile functions.
 *
 * @retval FALSE  all printers were handled; also when there is no memory or the spooler does not answer
 * @retval TRUE   a printer could not be read while it had jobs
 */
VLCM_API BOOL VlCm_DoCancelAllPrintJobNew(void);

/**
 * Deletes all printers on Bluetooth ports. Whether a deletion succeeds is not told, and the printer file
 * is not touched. Opens the trace scope "hlp_DeleteAllBTPrinter".
 *
 * @retval TRUE   the last printer was on a Bluetooth port, or there are no printers
 * @retval FALSE  the last printer was on another port
 */
VLCM_API BOOL VlCm_DeleteAllBTPrinter(void);

/**
 * As VlCm_DeleteAllBTPrinter(), through Windows' profile functions.
 *
 * @retval TRUE   the last printer was on a Bluetooth port, or there are no printers
 * @retval FALSE  the last printer was on another port
 */
VLCM_API BOOL VlCm_DeleteAllBTPrinterNew(void);

/**
 * Lets the user install a new printer and records it for a device. The installer runs in
 * "VlExecuteModule.exe" of the installation folder; the call waits without a limit until that program
 * signals the event "InstPrnt". The new printer is the first one whose name was not there before. Opens
 * the trace scope "hlp_InstallANewPrinter".
 *
 * While one call waits, a second one in the same process gives null at once, and lets a third one through.
 *
 * @param[in] address  device address; null gives null
 *
 * @return the new printer, open for everything; the caller closes it with ClosePrinter()
 * @retval NULL  nothing was installed, a step failed, or the new printer, though recorded, cannot be
 *               opened
 */
VLCM_API HANDLE VlCm_InstallANewPrinter(_In_reads_opt_(6) const uint8_t* address);

/**
 * Writes a device's printer record into the printer file. Opens the trace scope "hlp_WriteMyPrinterInfo".
 * Whether the file took it is not told.
 *
 * @param[in]  address       device address; null: nothing is done
 * @param[in]  record        the record; null: nothing is done. Of an empty text VlCm_GetMyPrinterInfo()
 *                           tells nothing: the texts behind it move up
 * @param[out] storedLength  receives the bytes stored: the four lengths and 5; may be null; untouched when
 *                           there is no memory
 *
 * @retval TRUE   written; also when there is no memory
 * @retval FALSE  an argument is null
 */
VLCM_API BOOL VlCm_WriteMyPrinterInfo(_In_reads_opt_(6) const uint8_t* address,
                                      _In_opt_ const VlPrinterRecord* record,
                                      _Out_opt_ uint32_t* storedLength);

/**
 * Reads a device's printer record. Each stored text that is not empty fills the next text of the record;
 * two empty ones in a row end it. Opens the trace scope "hlp_GetMyPrinterInfo".
 *
 * @param[in]     address  device address; null gives FALSE
 * @param[in,out] record   the texts for which none is stored are left as they were; untouched when the
 *                         result is FALSE; null gives FALSE
 *
 * @retval TRUE   read
 * @retval FALSE  no record, one of another length or with a wrong checksum, or no memory
 */
VLCM_API BOOL VlCm_GetMyPrinterInfo(_In_reads_opt_(6) const uint8_t* address,
                                    _Inout_opt_ VlPrinterRecord* record);

/**
 * Whether a device's printer is installed. A recorded printer must be among the system's printers in the
 * registry; if it is not, its record is removed. Without a record, a printer that the spooler has for the
 * device (VlCm_IsPrinterInfoInSystem()) is recorded. Opens the trace scope "hlp_IsPrinterInstalled".
 *
 * @param[in] address  device address; null gives FALSE
 *
 * @retval TRUE   it is
 * @retval FALSE  it is not, or no memory
 */
VLCM_API BOOL VlCm_IsPrinterInstalled(_In_reads_opt_(6) const uint8_t* address);

/**
 * Deletes a device's printer and its record, unless it has jobs. A user who is no administrator, or whom
 * the spooler denies access, is told so by the tray agent, which is started for it. Opens the trace scope
 * "hlp_DeleteMyPrinterByBDAddr".
 *
 * @param[in] address  device address; null gives FALSE
 *
 * @retval TRUE   deleted
 * @retval FALSE  no record, no rights, a busy printer, or the spooler refused
 */
VLCM_API BOOL VlCm_DeleteMyPrinterByBDAddr(_In_reads_opt_(6) const uint8_t* address);

/**
 * Whether the caller's user is an administrator.
 *
 * @param[out] isAdmin  receives the answer; untouched when the result is FALSE; null is traced and gives
 *                      FALSE
 *
 * @retval TRUE   the test was made
 * @retval FALSE  it could not be made (traced)
 */
VLCM_API BOOL VlCm_IsCurrentUserAdmin(_Out_opt_ BOOL* isAdmin);

/**
 * Whether the spooler has a printer for a device: one whose port the printer file ties to the address,
 * in any letter case. Found or null address are traced.
 *
 * @param[in]  address  device address; null gives FALSE
 * @param[out] record   receives the first such printer; untouched when there is none; may be null
 *
 * @retval TRUE   it has
 * @retval FALSE  it has none, or does not answer
 */
VLCM_API BOOL VlCm_IsPrinterInfoInSystem(_In_reads_opt_(6) const uint8_t* address,
                                         _Out_opt_ VlPrinterRecord* record);

VLCM_END
