// Identifiers of the resources and commands of Veltrin.exe; the resource compiler reads them too.
#pragma once

#define IDR_MAIN 100

// Commands.
#define IDC_CONNECT 200
#define IDC_SEND 201
#define IDC_SEND_TRANSFER 202
#define IDC_SEND_PRINT 203
#define IDC_REFRESH 204
#define IDC_NEXT_LIST 205
#define IDC_EXIT 206

// Child windows.
#define IDW_ADAPTER_ICON 300
#define IDW_ADAPTER_STATUS 301
#define IDW_ADAPTER_KIND 302
#define IDW_DEVICES_TITLE 303
#define IDW_DEVICES 304
#define IDW_SERVICES_TITLE 305
#define IDW_SERVICES 306
#define IDW_STATUS_BAR 307

// Texts. %1 and %2 stand for what is put in.
#define IDS_DEVICES 400
#define IDS_SERVICES 401
#define IDS_SERVICES_OF 402
#define IDS_COLUMN_DEVICE 403
#define IDS_COLUMN_KIND 404
#define IDS_COLUMN_STATUS 405
#define IDS_COLUMN_ADDRESS 406
#define IDS_COLUMN_SERVICE 407
#define IDS_COLUMN_DESCRIPTION 408
#define IDS_ADAPTER_STATUS 409
#define IDS_ADAPTER_KIND 410
#define IDS_NO_TEXTS 411
#define IDS_NO_DEVICES 412
#define IDS_ONE_DEVICE 413
#define IDS_DEVICE_COUNT 414
#define IDS_CONNECTING 415
#define IDS_CONNECT_ASKED 416
#define IDS_NO_DEFAULT 417
#define IDS_NO_SHORTCUT 418
#define IDS_NO_DEVICE_CHOSEN 419
#define IDS_NO_SERVICE_CHOSEN 420
#define IDS_TAKES_NO_FILES 421
#define IDS_SENDING 422
#define IDS_HANDED_OVER 423
#define IDS_NOT_HANDED_OVER 424
#define IDS_STILL_BUSY 425
#define IDS_CHOOSE_FILES 426
#define IDS_ALL_FILES 427
#define IDS_FILE_COUNT 428
#define IDS_NOT_READY 429
#define IDS_NO_AGENT 430
#define IDS_HINT                431
