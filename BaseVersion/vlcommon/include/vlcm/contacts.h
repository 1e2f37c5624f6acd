/**
 * @file
 * Contacts of a phone: records, display names and export to vCard files.
 *
 * A record is a head of 1296 bytes with pointers to its parts. Head and parts are blocks of
 * Vlcm_SHAlloc(), so that a record can go from module to module. Texts are in the stack's encoding
 * (UTF-8) and end at their terminator or at the end of their field.
 *
 * @attention Copying a record does not copy the blob record's inner block: both records then point at
 * the same one, and freeing both as they are frees it twice. Decide who keeps the block, set the other
 * record's pointer to null, then free in any order:
 * @code
 * VlCm_CopyPBAPContactItemEx(contact, pbap);
 * contact->blob->block = NULL;       // the block stays with the phone's record ...
 * VlCm_FreePBAPContactItemEx(pbap);  // ... and goes with it, here or later
 * VlCm_FreeContactItemEx(contact);
 * @endcode
 * A block that the destination had before the copy is lost unless it is freed first.
 */
#pragma once

#include "base.h"

VLCM_BEGIN

/** Entries of each list of a record. */
enum VlContactCapacity {
    VLCM_CONTACT_PHONES = 10,   /**< Phone numbers. */
    VLCM_CONTACT_ADDRESSES = 3, /**< Postal addresses. */
    VLCM_CONTACT_EMAILS = 3,    /**< E-mail addresses. */
    VLCM_CONTACT_URLS = 3       /**< URLs; the second list has as many. */
};

/** Phone types that a vCard tells; others are carried and not written. */
enum VlContactPhoneType {
    VLCM_PHONE_VOICE = 0, /**< No location. */
    VLCM_PHONE_HOME = 1,  /**< At home. */
    VLCM_PHONE_WORK = 2,  /**< At work. */
    VLCM_PHONE_CELL = 6   /**< Mobile. */
};

/** Places in a record's list of addresses. */
enum VlContactAddressPlace {
    VLCM_ADDRESS_OTHER = 0, /**< Carried, not written to vCards. */
    VLCM_ADDRESS_HOME = 1,  /**< At home. */
    VLCM_ADDRESS_WORK = 2   /**< At work. */
};

/** A contact's names. */
typedef struct VlContactName {
    uint32_t word0;       /**< Carried whole. */
    char family[256];     /**< Family name. */
    char additional[256]; /**< Additional (middle) name. */
    char given[256];      /**< Given name. */
    char text4[256];      /**< Carried whole. */
    char text5[256];      /**< Carried whole. */
} VlContactName;
VLCM_CHECK(sizeof(VlContactName) == 1284, "size");
VLCM_CHECK(offsetof(VlContactName, family) == 4, "offset");
VLCM_CHECK(offsetof(VlContactName, additional) == 260, "offset");
VLCM_CHECK(offsetof(VlContactName, given) == 516, "offset");
VLCM_CHECK(offsetof(VlContactName, text4) == 772, "offset");
VLCM_CHECK(offsetof(VlContactName, text5) == 1028, "offset");

/** Where a contact works. */
typedef struct VlContactOrganisation {
    uint32_t word0;       /**< Carried whole. */
    char company[256];    /**< Company. */
    char department[256]; /**< Department. */
    char title[256];      /**< Job title. */
    char text4[256];      /**< Carried whole. */
} VlContactOrganisation;
VLCM_CHECK(sizeof(VlContactOrganisation) == 1028, "size");
VLCM_CHECK(offsetof(VlContactOrganisation, company) == 4, "offset");
VLCM_CHECK(offsetof(VlContactOrganisation, department) == 260, "offset");
VLCM_CHECK(offsetof(VlContactOrganisation, title) == 516, "offset");
VLCM_CHECK(offsetof(VlContactOrganisation, text4) == 772, "offset");

/** Bytes that belong to a contact. */
typedef struct VlContactBlob {
    uint8_t head[264]; /**< Carried whole. */
    void* block;       /**< Inner block of Vlcm_SHAlloc(), or null; a copy of the record shares it. */
} VlContactBlob;
VLCM_CHECK(sizeof(VlContactBlob) == 272, "size");
VLCM_CHECK(offsetof(VlContactBlob, block) == 264, "offset");

/** A phone number. */
typedef struct VlContactPhone {
    uint32_t words[2]; /**< Carried whole. */
    uint32_t type;     /**< A VlContactPhoneType, or another number. */
    char number[44];   /**< The number; a vCard takes its first 40 characters. */
} VlContactPhone;
VLCM_CHECK(sizeof(VlContactPhone) == 56, "size");
VLCM_CHECK(offsetof(VlContactPhone, type) == 8, "offset");
VLCM_CHECK(offsetof(VlContactPhone, number) == 12, "offset");

/** A postal address. */
typedef struct VlContactAddress {
    uint32_t words[3];    /**< Carried whole. */
    char country[256];    /**< Country. */
    char region[256];     /**< Region. */
    char locality[256];   /**< Town. */
    char street[256];     /**< Street and number. */
    char text5[256];      /**< Carried whole. */
    char postalCode[256]; /**< Postal code. */
    char text7[256];      /**< Carried whole. */
} VlContactAddress;
VLCM_CHECK(sizeof(VlContactAddress) == 1804, "size");
VLCM_CHECK(offsetof(VlContactAddress, country) == 12, "offset");
VLCM_CHECK(offsetof(VlContactAddress, region) == 268, "offset");
VLCM_CHECK(offsetof(VlContactAddress, locality) == 524, "offset");
VLCM_CHECK(offsetof(VlContactAddress, street) == 780, "offset");
VLCM_CHECK(offsetof(VlContactAddress, text5) == 1036, "offset");
VLCM_CHECK(offsetof(VlContactAddress, postalCode) == 1292, "offset");
VLCM_CHECK(offsetof(VlContactAddress, text7) == 1548, "offset");

/** An e-mail address. */
typedef struct VlContactEmail {
    uint32_t words[3]; /**< Carried whole. */
    char address[44];  /**< The address. */
} VlContactEmail;
VLCM_CHECK(sizeof(VlContactEmail) == 56, "size");
VLCM_CHECK(offsetof(VlContactEmail, address) == 12, "offset");

/** A URL, or an entry of the second list. */
typedef struct VlContactUrl {
    uint32_t words[3]; /**< Carried whole. */
    char text[256];    /**< The URL. */
} VlContactUrl;
VLCM_CHECK(sizeof(VlContactUrl) == 268, "size");
VLCM_CHECK(offsetof(VlContactUrl, text) == 12, "offset");

/** A contact: the head of a record. Each pointer is a block of its own. */
typedef struct VlContact {
    uint32_t size;                       /**< 1296, the size of this head. */
    char text1[64];                      /**< Carried whole. */
    VlContactName* name;                 /**< Names. */
    uint8_t items[2][16];                /**< Carried whole. */
    char text2[64];                      /**< Carried whole. */
    char longText[1024];                 /**< Carried whole. */
    VlContactOrganisation* organisation; /**< Company, department, job title. */
    VlContactBlob* blob;                 /**< Bytes with an inner block. */
    uint32_t* phoneCapacity;             /**< 10. */
    VlContactPhone* phones;              /**< 10 phone numbers. */
    uint32_t* addressCapacity;           /**< 3. */
    VlContactAddress* addresses;         /**< 3 addresses, see VlContactAddressPlace. */
    uint32_t* emailCapacity;             /**< 3. */
    VlContactEmail* emails;              /**< 3 e-mail addresses; a vCard takes the first. */
    uint32_t* urlCapacity;               /**< 3. */
    VlContactUrl* urls;                  /**< 3 URLs; a vCard takes the first. */
    uint32_t* secondCapacity;            /**< 3. */
    VlContactUrl* second;                /**< 3 entries; not written to vCards. */
} VlContact;
VLCM_CHECK(sizeof(VlContact) == 1296, "size");
VLCM_CHECK(offsetof(VlContact, size) == 0, "offset");
VLCM_CHECK(offsetof(VlContact, text1) == 4, "offset");
VLCM_CHECK(offsetof(VlContact, name) == 72, "offset");
VLCM_CHECK(offsetof(VlContact, items) == 80, "offset");
VLCM_CHECK(offsetof(VlContact, text2) == 112, "offset");
VLCM_CHECK(offsetof(VlContact, longText) == 176, "offset");
VLCM_CHECK(offsetof(VlContact, organisation) == 1200, "offset");
VLCM_CHECK(offsetof(VlContact, blob) == 1208, "offset");
VLCM_CHECK(offsetof(VlContact, phoneCapacity) == 1216, "offset");
VLCM_CHECK(offsetof(VlContact, phones) == 1224, "offset");
VLCM_CHECK(offsetof(VlContact, addressCapacity) == 1232, "offset");
VLCM_CHECK(offsetof(VlContact, addresses) == 1240, "offset");
VLCM_CHECK(offsetof(VlContact, emailCapacity) == 1248, "offset");
VLCM_CHECK(offsetof(VlContact, emails) == 1256, "offset");
VLCM_CHECK(offsetof(VlContact, urlCapacity) == 1264, "offset");
VLCM_CHECK(offsetof(VlContact, urls) == 1272, "offset");
VLCM_CHECK(offsetof(VlContact, secondCapacity) == 1280, "offset");
VLCM_CHECK(offsetof(VlContact, second) == 1288, "offset");

VLCM_CHECK(VLCM_CONTACT_PHONES * sizeof(VlContactPhone) == 560, "size");
VLCM_CHECK(VLCM_CONTACT_ADDRESSES * sizeof(VlContactAddress) == 5412, "size");
VLCM_CHECK(VLCM_CONTACT_EMAILS * sizeof(VlContactEmail) == 168, "size");
VLCM_CHECK(VLCM_CONTACT_URLS * sizeof(VlContactUrl) == 804, "size");

/** A contact as the stack reads it from a phone's phone book: the same record. */
typedef VlContact VlPbapContact;

/** A contact as a phone's own memory holds it, without parts. */
typedef struct VlFlatContact {
    uint32_t word0;      /**< Carried whole. */
    char longText[1024]; /**< Carried whole. */
    char text1[64];      /**< Carried whole. */
    uint32_t words[4];   /**< Carried whole. */
    char text2[64];      /**< Carried whole. */
    uint32_t lastWord;   /**< Carried whole. */
} VlFlatContact;
VLCM_CHECK(sizeof(VlFlatContact) == 1176, "size");
VLCM_CHECK(offsetof(VlFlatContact, word0) == 0, "offset");
VLCM_CHECK(offsetof(VlFlatContact, longText) == 4, "offset");
VLCM_CHECK(offsetof(VlFlatContact, text1) == 1028, "offset");
VLCM_CHECK(offsetof(VlFlatContact, words) == 1092, "offset");
VLCM_CHECK(offsetof(VlFlatContact, text2) == 1108, "offset");
VLCM_CHECK(offsetof(VlFlatContact, lastWord) == 1172, "offset");

/**
 * A new, empty contact with all its parts: everything zero but the size and the capacity words.
 * Opens no trace scope.
 *
 * @return the record, freed with VlCm_FreeContactItemEx(); null when there is no memory for all of it
 */
VLCM_API VlContact* VlCm_AllocContactItemEx(void);

/**
 * A new, empty phone-book contact, ready for Btsdk_PIMParseContactDetails2(); otherwise as
 * VlCm_AllocContactItemEx().
 *
 * @return the record, freed with VlCm_FreePBAPContactItemEx(); null when there is no memory for all of it
 */
VLCM_API VlPbapContact* VlCm_AllocPBAPContactItemEx(void);

/**
 * Copies a contact into another one: the content of every part, and the head's texts and items. The
 * destination keeps its own parts, its size becomes 1296. A part that is null in either record is
 * passed over. Opens no trace scope.
 *
 * @attention Afterwards both records point at the same inner block of the blob record, which must be
 * freed only once: see the example at the top of this file.
 *
 * @param[in,out] destination  record of VlCm_AllocContactItemEx(); null: nothing is done
 * @param[in]     source       record to copy; null: nothing is done
 */
VLCM_API void VlCm_CopyPBAPContactItemEx(_Inout_opt_ VlContact* destination,
                                         _In_opt_ const VlPbapContact* source);

/**
 * Copies a flat contact, field by field. Opens no trace scope.
 *
 * @param[out] destination  receives the contact; null: nothing is done
 * @param[in]  source       contact to copy; null: nothing is done
 */
VLCM_API void VlCm_CopyPBAPContactItemMbToPBAP(_Out_opt_ VlFlatContact* destination,
                                               _In_opt_ const VlFlatContact* source);

/**
 * Frees a contact: the blob record's inner block, every part, then the head, each with Vlcm_SHFree().
 * Parts that are null are passed over. Opens no trace scope.
 *
 * @attention Of two records that share an inner block, set the pointer in one to null before: see the
 * example at the top of this file.
 *
 * @param[in] contact  record of VlCm_AllocContactItemEx(); null: nothing is done
 */
VLCM_API void VlCm_FreeContactItemEx(_In_opt_ VlContact* contact);

/**
 * Frees a phone-book contact as VlCm_FreeContactItemEx() does.
 *
 * @param[in] contact  record of VlCm_AllocPBAPContactItemEx(); null: nothing is done
 */
VLCM_API void VlCm_FreePBAPContactItemEx(_In_opt_ VlPbapContact* contact);

/**
 * A contact's name as people read it: family, given and additional name, as far as they are not empty,
 * with a blank between them. Opens the trace scope "VlCm_GetContactName".
 *
 * @attention The size is no limit: the name is written whole, up to 771 bytes.
 *
 * @param[in]  name    names, in the stack's encoding
 * @param[out] buffer  receives the terminated name, "" when all names are empty
 * @param[in]  size    room at @p buffer; only 0 is told from other values
 *
 * @retval 1  the name was written
 * @retval 0  a pointer is null or the size is 0; nothing was written
 */
VLCM_API uint32_t VlCm_GetContactName(_In_opt_ const VlContactName* name, _Out_opt_ char* buffer,
                                      uint32_t size);

/**
 * Writes contact details of a phone to a file as one vCard 2.1. The stack reads the details
 * (Btsdk_PIMParseContactDetails2()) and writes the file, which replaces one of the same name. Opens no
 * trace scope.
 *
 * Texts are written as the stack gave them, in UTF-8: nothing is escaped, folded or converted, and the
 * value of a line is cut at 259 bytes. Of the phone numbers the first of each of four types is written,
 * cut at 40 characters; a department takes the company's place.
 *
 * @attention Without any name the line of the names has no end and the next property follows on it; many
 * readers refuse such a card. The result does not tell whether a file was written or the details were
 * understood.
 *
 * @param[in] details  contact details in the phone's own format
 * @param[in] path     file to write, in the ANSI code page
 *
 * @retval 1  the card was written, as far as the file could be made and written
 * @retval 0  a pointer is null, or there is no memory for a record; when it is for the second one, an
 *            empty file stays
 */
VLCM_API uint32_t VlCm_ConvertMBContactToVcfFile(_In_opt_ const void* details, _In_opt_z_ const char* path);

VLCM_END
