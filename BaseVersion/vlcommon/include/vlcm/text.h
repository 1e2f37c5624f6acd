/**
 * @file
 * Code pages, display limits, numbers, addresses and remote paths.
 *
 * None of these functions keeps state or opens a trace scope.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/**
 * Converts UTF-8 to the process's ANSI code page.
 *
 * The result comes from MultiByteToWideChar and WideCharToMultiByte without flags: invalid UTF-8 and
 * characters that the code page lacks are replaced. The destination is emptied before the source is
 * read, so the same buffer cannot serve as both; see VlCm_UTF8ToLocalEx().
 *
 * @param[out] destination  receives the text; null: nothing is done
 * @param[in]  source       terminated UTF-8 text; null: the destination is emptied
 * @param[in]  size         room at @p destination in bytes, terminator included; 0: nothing is done
 * @return length of the text in @p destination in bytes, without terminator
 * @retval 0  empty source, null argument, size 0, no memory, or a conversion that failed; the
 *            destination, if there is one, is empty
 *
 * A text that does not fit is cut by the conversion call wherever it stops, without a terminator: the
 * result is then the number of bytes before the first zero byte within @p size, at most @p size.
 */
VLCM_API int VlCm_UTF8ToLocal(_Out_writes_opt_(size) char* destination, _In_opt_z_ const char* source,
                              unsigned int size);

/**
 * Converts text of the process's ANSI code page to UTF-8; otherwise as VlCm_UTF8ToLocal(). One ANSI byte
 * can become three bytes.
 *
 * @param[out] destination  receives the text; null: nothing is done
 * @param[in]  source       terminated ANSI text; null: the destination is emptied
 * @param[in]  size         room at @p destination in bytes, terminator included; 0: nothing is done
 * @return length of the text in @p destination in bytes, without terminator
 * @retval 0  as for VlCm_UTF8ToLocal()
 */
VLCM_API int VlCm_LocalToUTF8(_Out_writes_opt_(size) char* destination, _In_opt_z_ const char* source,
                              unsigned int size);

/**
 * Converts UTF-8 to the process's ANSI code page in place.
 *
 * The text's own length is all the room that the result has: it is cut there, and it is terminated only
 * when it is shorter. The byte behind the text is neither read nor written.
 *
 * @param[in,out] buffer  the text, which needs no terminator; null: nothing is done
 * @param[in]     length  length of the text in bytes; 0: nothing is done
 * @return new length in bytes, at most @p length
 * @retval length  also when there was no memory: the text is unchanged
 * @retval 0       null buffer, length 0, or the conversion failed and the text is now empty
 */
VLCM_API unsigned int VlCm_UTF8ToLocalEx(_Inout_updates_opt_(length) char* buffer, unsigned int length);

/**
 * Converts text of the process's ANSI code page to UTF-8 in place; otherwise as VlCm_UTF8ToLocalEx(). A
 * text with characters beyond ASCII grows and therefore loses its end.
 *
 * @param[in,out] buffer  the text, which needs no terminator; null: nothing is done
 * @param[in]     length  length of the text in bytes; 0: nothing is done
 * @return new length in bytes, at most @p length
 * @retval length  also when there was no memory: the text is unchanged
 * @retval 0       null buffer, length 0, or the conversion failed and the text is now empty
 */
VLCM_API unsigned int VlCm_LocalToUTF8Ex(_Inout_updates_opt_(length) char* buffer, unsigned int length);

/**
 * Shortens a UTF-8 text for display, with "..." in place of what is cut off.
 *
 * The text is walked by the upper four bits of each first byte until @p charLimit characters are
 * counted or the next one would end less than three bytes before @p byteLimit. If the byte three places
 * on is 0, nothing is changed. Otherwise "..." and a terminator are written there; where they do not end
 * before @p byteLimit, the call is made again with one character less.
 *
 * @param[in,out] text  UTF-8 text; bytes are counted as they stand, also behind the terminator: at
 *                      least max(@p byteLimit, 3) + 1 bytes must be readable. Null: nothing is done
 * @param[in] byteLimit   longest shortened text in bytes, dots included
 * @param[in] charLimit   most characters before the dots
 * @param[in] wideWeight  characters that one sequence of three bytes counts for
 * @return a byte position, not the text's length: where the dots were written; three bytes beyond the
 *         last walked character when nothing had to be cut; one beyond the first byte below 0x10
 *         (terminator, tab, line feed) when the walk came to one
 * @retval 0  null text; @p byteLimit below @p charLimit; no character could be walked past. With a
 *            negative @p byteLimit the last case also writes a failure line
 */
VLCM_API int VlCm_LimitStringCharacterCount(_Inout_opt_ char* text, int byteLimit, int charLimit,
                                            int wideWeight);

/**
 * Decimal text of high * 4294967296 + low.
 *
 * A trap that callers rely on: when @p high has more decimal digits than @p low, the digits of @p high
 * to the left of those of @p low are added in as well, as if they stood before @p low; 0 has no digits.
 * (1, 0) gives 4294967297 and (12, 5) gives 51539607567.
 *
 * @param[in]  high    upper 32 bits
 * @param[in]  low     lower 32 bits
 * @param[out] buffer  receives the digits; null: only the length is wanted
 * @param[in]  size    room at @p buffer in bytes. Above the length: digits and terminator are written.
 *                     1 up to the length: only the last @p size digits, without terminator. 0: all
 *                     digits without terminator, whatever room there is, up to 20
 * @return number of digits written; with a null buffer the length of the text
 */
VLCM_API int VlCm_U64TOA(unsigned int high, unsigned int low, _Out_writes_opt_(size) char* buffer,
                         unsigned int size);

/**
 * Reads a printed Bluetooth device address, "00:11:22:33:44:AB": the first pair is byte 5.
 *
 * The text is not checked: separators are never looked at, a character that is no hexadecimal digit
 * counts with its code, and digits missing at the end count as 0.
 *
 * @param[in]  text     terminated text; null: nothing is done
 * @param[out] address  receives 6 bytes; null: nothing is done
 * @param[in]  size     room at @p address in bytes; anything but 6: nothing is done
 * @retval TRUE   the address was stored
 * @retval FALSE  an argument was null or the size was not 6
 */
VLCM_API BOOL VlCm_ParseDeviceAddressFromString(_In_opt_z_ const char* text,
                                                _Out_writes_opt_(size) unsigned char* address,
                                                unsigned int size);

/**
 * Turns the separators of a file path, for a remote device or back.
 *
 * In a double-byte code page the second byte of a character is never taken for a separator.
 *
 * @param[in,out] path   terminated ANSI text; null: nothing is done
 * @param[in] direction  1: every backslash becomes "/"; 2: every "/" becomes a backslash; anything else:
 *                       nothing is done
 */
VLCM_API void VlCm_FormatFTPFilePath(_Inout_opt_z_ char* path, int direction);

VLCM_END
