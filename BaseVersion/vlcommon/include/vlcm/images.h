/**
 * @file
 * Pictures and message attachments: formats, dimensions, thumbnails, types.
 *
 * Every image function starts GDI+ for itself and shuts it down before it returns, also while the caller
 * runs GDI+ of its own. The first one in a process loads GDI+. Nothing but VlCm_GetEncoderClsid() reports
 * a failure: what cannot be told is left as the caller set it, so zero the records first. Image paths are
 * cut at 259 characters. All functions open a trace scope of the image module, named as the function
 * without "VlCm_".
 */
#pragma once

#include "base.h"

#ifdef __cplusplus
namespace Gdiplus {
class GpImage;
}
/** A loaded image, the GpImage of GDI+'s flat interface. */
typedef Gdiplus::GpImage VlGdiPlusImage;
#else
/** A loaded image, the GpImage of GDI+'s flat interface. */
typedef void VlGdiPlusImage;
#endif

VLCM_BEGIN

/** Image formats. */
enum VlCmImageEncoding {
    VLCM_IMAGE_JPEG = 1, /**< JPEG. */
    VLCM_IMAGE_GIF = 2,  /**< GIF. */
    VLCM_IMAGE_PNG = 4,  /**< PNG. */
    VLCM_IMAGE_BMP = 6   /**< Windows bitmap. */
};

/** Width of a thumbnail in pixels. */
#define VLCM_THUMBNAIL_WIDTH 160
/** Height of a thumbnail in pixels. */
#define VLCM_THUMBNAIL_HEIGHT 120

/** What VlCm_GetImgProp() tells of an image. */
typedef struct VlImageProperty {
    uint32_t dimensions; /**< Width in the high 16 bits, height in the low ones. */
    uint32_t word4;      /**< Not written. */
    uint32_t fileSize;   /**< Length of the file in bytes; its low 32 bits from 4 GiB on. */
    uint8_t encoding;    /**< A VlCmImageEncoding. */
} VlImageProperty;
VLCM_CHECK(sizeof(VlImageProperty) == 16, "size");
VLCM_CHECK(offsetof(VlImageProperty, dimensions) == 0, "offset");
VLCM_CHECK(offsetof(VlImageProperty, word4) == 4, "offset");
VLCM_CHECK(offsetof(VlImageProperty, fileSize) == 8, "offset");
VLCM_CHECK(offsetof(VlImageProperty, encoding) == 12, "offset");

/** What VlCm_GetAttachmentProp() tells of an attachment. */
typedef struct VlAttachmentProperty {
    uint32_t size;     /**< Length of the file in bytes; its low 32 bits from 4 GiB on. */
    char mimeType[40]; /**< "text/plain" or "audio/basic". */
    char name[256];    /**< The name as given. */
    char time[20];     /**< When the file was made, "YYYYMMDDThhmmssZ" and the terminator: 17 bytes. */
} VlAttachmentProperty;
VLCM_CHECK(sizeof(VlAttachmentProperty) == 320, "size");
VLCM_CHECK(offsetof(VlAttachmentProperty, size) == 0, "offset");
VLCM_CHECK(offsetof(VlAttachmentProperty, mimeType) == 4, "offset");
VLCM_CHECK(offsetof(VlAttachmentProperty, name) == 44, "offset");
VLCM_CHECK(offsetof(VlAttachmentProperty, time) == 300, "offset");

/**
 * The GDI+ encoder for a MIME type.
 *
 * The system's encoders are compared in list order; the first one whose type is equal wins.
 *
 * @param[in]  mimeType  such as L"image/jpeg"; compared exactly, letter case included; null: no encoder
 * @param[out] encoder   receives the encoder's class identifier; untouched without one; null: no encoder
 *
 * @return the encoder's position in the system's list, from 0; -1 when there is none, the list cannot be
 *         had, memory is short or GDI+ does not start
 */
VLCM_API int VlCm_GetEncoderClsid(_In_opt_z_ const wchar_t* mimeType, _Out_opt_ CLSID* encoder);

/**
 * The format of a loaded image, from GDI+'s raw format of it.
 *
 * @param[in]  image     loaded with GDI+ by the caller, whose own GDI+ session runs; stays the caller's;
 *                       null: nothing is done
 * @param[out] encoding  receives a VlCmImageEncoding, one byte; untouched for any other format, for example
 *                       of an image that was drawn and not loaded; null: nothing is done
 */
VLCM_API void VlCm_GetImgEncode(_In_opt_ VlGdiPlusImage* image, _Inout_opt_ unsigned char* encoding);

/**
 * The format of an image file, by its content.
 *
 * @param[in]  path      file, in the ANSI code page; null: nothing is done
 * @param[out] encoding  receives a VlCmImageEncoding, one byte; untouched for any other format and for a
 *                       file that GDI+ cannot load; null: nothing is done
 */
VLCM_API void VlCm_GetImgEncodeEx(_In_opt_z_ const char* path, _Inout_opt_ unsigned char* encoding);

/**
 * Dimensions, format and size of an image file.
 *
 * The size is told also when the file is no image, but not when GDI+ does not start.
 *
 * @attention The path is UTF-8, unlike that of every other image function.
 *
 * @param[in]     path      file, in UTF-8; null: nothing is done
 * @param[in,out] property  receives what can be told, field by field; the rest is untouched. Height is
 *                          joined to the width without a mask: 65,536 pixels or more spoil it. Null:
 *                          nothing is done
 */
VLCM_API void VlCm_GetImgProp(_In_opt_z_ const char* path, _Inout_opt_ VlImageProperty* property);

/**
 * Makes a thumbnail: a JPEG file of exactly 160 by 120 pixels, whatever the shape of the image.
 *
 * @attention Reports nothing. A thumbnail file that exists is replaced; it is untouched when the source
 * cannot be loaded or no thumbnail can be made of it.
 *
 * @param[in] source     image file, in the ANSI code page; null: nothing is done
 * @param[in] thumbnail  file to write, in the ANSI code page; its folder exists; null: nothing is done
 */
VLCM_API void VlCm_CreateThumbFile(_In_opt_z_ const char* source, _In_opt_z_ const char* thumbnail);

/**
 * The MIME type of an attachment, by its name: "text/plain" when ".txt" is found anywhere in it, otherwise
 * "audio/basic" when ".wav" is. Letter case counts: "a.TXT" has no type, "notes.txt.zip" is text.
 *
 * @param[in]  name      file name; null: nothing is done
 * @param[out] mimeType  receives the type, at most 12 bytes with the terminator; untouched for any other
 *                       name; null: nothing is done
 */
VLCM_API void VlCm_GetAttType(_In_opt_z_ const char* name, _Inout_opt_z_ char* mimeType);

/**
 * As VlCm_GetAttType(); only the trace scope's name differs.
 *
 * @param[in]  name      file name; null: nothing is done
 * @param[out] mimeType  receives the type; untouched for any other name; null: nothing is done
 */
VLCM_API void VlCm_GetAttachmentType(_In_opt_z_ const char* name, _Inout_opt_z_ char* mimeType);

/**
 * Size, type, name and time stamp of an attachment.
 *
 * The size is untouched when the file cannot be opened for reading, the time when its status cannot be
 * read. The time is that of the file's creation (the runtime's st_ctime), not of its last change, and it is
 * local time although it ends in "Z". Does not use GDI+.
 *
 * @attention The name's length is not checked: one of 256 bytes or more runs on into the time, which is
 * written after it, and one of 276 or more runs past the record.
 *
 * @param[in]     path      file, in the ANSI code page; null: nothing is done
 * @param[in]     name      name under which the file is attached; also decides its type, as in
 *                          VlCm_GetAttType(); null: nothing is done
 * @param[in,out] property  receives what can be told; the rest is untouched; null: nothing is done
 */
VLCM_API void VlCm_GetAttachmentProp(_In_opt_z_ const char* path, _In_opt_z_ const char* name,
                                     _Inout_opt_ VlAttachmentProperty* property);

VLCM_END
