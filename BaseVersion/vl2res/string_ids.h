// The string identifiers of Vl2Res.dll: the one list, for every language and every program.
//
// After each number stands the room of its text: the smallest buffer that it is loaded into, in characters
// with the terminator, both as UTF-16 and as bytes of the language's code page. A loader cuts what is
// longer, if need be in the middle of a character. Behind it "file" when the text names files or folders,
// or the conversions that the text must hold, in their order.
//
// To add one: a line here and a text in every strings_*.rc; check_texts.py compares them during the build.
// A language must not have a gap: Windows falls back to English by blocks of 16 identifiers, so that a
// single missing text would be empty. A new language is a file strings_*.rc, its line in strings.rc and its
// code page in check_texts.py.
#pragma once

// The columns stay.
// clang-format off

// The Send-To folder and its links: these name files and folders.
#define IDS_SENDTO_FOLDER                667  // 50 file
#define IDS_SENDTO_OTHER_DEVICE         2503  // 63 file

// A name of a service: a shortcut's name takes 70 bytes of it. A description or a kind of device: programs
// may count on 100 characters.

// Services of the stack's own: names and what a remote device offers with them.
#define IDS_NAME_STACK_1                 630  // 71
#define IDS_NAME_STACK_2_3               625  // 71
#define IDS_NAME_STACK_4                 629  // 71
#define IDS_NAME_STACK_5                 626  // 71
#define IDS_NAME_STACK_6                 627  // 71
#define IDS_NAME_STACK_7                 628  // 71
#define IDS_REMOTE_STACK_1               624  // 100
#define IDS_REMOTE_STACK_2               620  // 100
#define IDS_REMOTE_STACK_3               617  // 100
#define IDS_REMOTE_STACK_4               623  // 100
#define IDS_REMOTE_STACK_6               621  // 100
#define IDS_REMOTE_STACK_7               622  // 100

// Kinds of devices: minor classes. The first also names a device that has no name, in files too.
#define IDS_DEVICE_UNKNOWN              1101  // 100 file
#define IDS_DEVICE_DESKTOP              1103  // 100
#define IDS_DEVICE_SERVER               1104  // 100
#define IDS_DEVICE_LAPTOP               1105  // 100
#define IDS_DEVICE_HANDHELD             1106  // 100
#define IDS_DEVICE_PALM_SIZE            1107  // 100
#define IDS_DEVICE_WEARABLE_COMPUTER    1108  // 100
#define IDS_DEVICE_PHONE                1109  // 100
#define IDS_DEVICE_CELLULAR             1110  // 100
#define IDS_DEVICE_CORDLESS             1111  // 100
#define IDS_DEVICE_SMARTPHONE           1112  // 100
#define IDS_DEVICE_MODEM                1113  // 100
#define IDS_DEVICE_ISDN                 1114  // 100
#define IDS_DEVICE_SIM_READER           1115  // 100
#define IDS_DEVICE_ACCESS_POINT         1116  // 100
#define IDS_DEVICE_AUDIO                1124  // 100
#define IDS_DEVICE_HEADSET              1125  // 100
#define IDS_DEVICE_HANDS_FREE           1126  // 100
#define IDS_DEVICE_MICROPHONE           1128  // 100
#define IDS_DEVICE_LOUDSPEAKER          1129  // 100
#define IDS_DEVICE_HEADPHONES           1130  // 100
#define IDS_DEVICE_PORTABLE_AUDIO       1131  // 100
#define IDS_DEVICE_CAR_AUDIO            1132  // 100
#define IDS_DEVICE_SET_TOP_BOX          1133  // 100
#define IDS_DEVICE_HIFI                 1134  // 100
#define IDS_DEVICE_VIDEO_RECORDER       1135  // 100
#define IDS_DEVICE_VIDEO_CAMERA         1136  // 100
#define IDS_DEVICE_CAMCORDER            1137  // 100
#define IDS_DEVICE_VIDEO_MONITOR        1138  // 100
#define IDS_DEVICE_VIDEO_DISPLAY        1139  // 100
#define IDS_DEVICE_VIDEO_CONFERENCE     1140  // 100
#define IDS_DEVICE_TOY                  1141  // 100
#define IDS_DEVICE_KEYBOARD             1142  // 100
#define IDS_DEVICE_POINTER              1143  // 100
#define IDS_DEVICE_KEYBOARD_POINTER     1144  // 100
#define IDS_DEVICE_JOYSTICK             1145  // 100
#define IDS_DEVICE_GAMEPAD              1146  // 100
#define IDS_DEVICE_REMOTE_CONTROL       1147  // 100
#define IDS_DEVICE_SENSOR               1148  // 100
#define IDS_DEVICE_DISPLAY              1149  // 100
#define IDS_DEVICE_CAMERA               1150  // 100
#define IDS_DEVICE_SCANNER              1151  // 100
#define IDS_DEVICE_PRINTER              1152  // 100
#define IDS_DEVICE_LOW_ENERGY          57941  // 100

// Kinds of devices: major classes, and the word for a kind that is not known.
#define IDS_KIND_UNKNOWN                1200  // 100
#define IDS_MAJOR_PHONE                 1201  // 100
#define IDS_MAJOR_ACCESS_POINT          1202  // 100
#define IDS_MAJOR_AUDIO                 1203  // 100
#define IDS_MAJOR_COMPUTER              1204  // 100
#define IDS_MAJOR_PERIPHERAL            1205  // 100
#define IDS_MAJOR_IMAGING               1206  // 100
#define IDS_MAJOR_UNCATEGORIZED         1207  // 100

// Names of services. The first also names an unknown class.
#define IDS_NAME_UNKNOWN                1153  // 71
#define IDS_NAME_SERIAL_PORT            1154  // 71
#define IDS_NAME_LAN_ACCESS             1155  // 71
#define IDS_NAME_DIAL_UP                1156  // 71
#define IDS_NAME_SYNC                   1157  // 71
#define IDS_NAME_SYNC_COMMAND           1158  // 71
#define IDS_NAME_HEADSET                1159  // 71
#define IDS_NAME_CORDLESS               1160  // 71
#define IDS_NAME_AUDIO_SOURCE           1161  // 71
#define IDS_NAME_AUDIO_SINK             1162  // 71
#define IDS_NAME_REMOTE_CONTROL_TARGET  1163  // 71
#define IDS_NAME_REMOTE_CONTROL         1164  // 71
#define IDS_NAME_INTERCOM               1165  // 71
#define IDS_NAME_FAX                    1166  // 71
#define IDS_NAME_HEADSET_GATEWAY        1167  // 71
#define IDS_NAME_PAN_USER               1168  // 71
#define IDS_NAME_ACCESS_POINT           1169  // 71
#define IDS_NAME_GROUP_NETWORK          1170  // 71
#define IDS_NAME_IMAGE_ARCHIVE          1172  // 71
#define IDS_NAME_REFERENCED_IMAGES      1173  // 71
#define IDS_NAME_HANDS_FREE             1174  // 71
#define IDS_NAME_HANDS_FREE_GATEWAY     1175  // 71
#define IDS_NAME_INPUT_DEVICE           1176  // 71
#define IDS_NAME_HARDCOPY               1177  // 71
#define IDS_NAME_SIM_ACCESS             1178  // 71
#define IDS_NAME_PNP                    1179  // 71
#define IDS_NAME_OBJECT_PUSH            1180  // 71
#define IDS_NAME_FILE_TRANSFER          1181  // 71
#define IDS_NAME_MESSAGE_ACCESS         1992  // 71
#define IDS_NAME_IMAGING               57669  // 71
#define IDS_NAME_PRINTING              57675  // 71
#define IDS_NAME_PHONEBOOK             57932  // 71
#define IDS_NAME_GENERIC_ACCESS        57940  // 71

// Appended to a serial port's name, in parentheses: one decimal number.
#define IDS_PORT_FORMAT                 5022  // 20 %d

// What this computer offers with a service.
#define IDS_LOCAL_AUDIO_SINK            1832  // 100
#define IDS_LOCAL_SERIAL_PORT           1844  // 100
#define IDS_LOCAL_OBJECT_PUSH           1845  // 100
#define IDS_LOCAL_FILE_TRANSFER         1846  // 100
#define IDS_LOCAL_CORDLESS              1847  // 100
#define IDS_LOCAL_AUDIO_SOURCE          1848  // 100
#define IDS_LOCAL_FAX                   1849  // 100
#define IDS_LOCAL_HEADSET_GATEWAY       1850  // 100
#define IDS_LOCAL_HANDS_FREE_GATEWAY    1851  // 100
#define IDS_LOCAL_PAN_USER              1852  // 100
#define IDS_LOCAL_ACCESS_POINT          1853  // 100
#define IDS_LOCAL_GROUP_NETWORK         1854  // 100
#define IDS_LOCAL_IMAGING               1855  // 100
#define IDS_LOCAL_PRINTING             57673  // 100

// What a remote device offers with a service.
#define IDS_REMOTE_SERIAL_PORT          1856  // 100
#define IDS_REMOTE_OBJECT_PUSH          1857  // 100
#define IDS_REMOTE_FILE_TRANSFER        1858  // 100
#define IDS_REMOTE_FAX                  1859  // 100
#define IDS_REMOTE_PAN_USER             1860  // 100
#define IDS_REMOTE_ACCESS_POINT         1861  // 100
#define IDS_REMOTE_GROUP_NETWORK        1862  // 100
#define IDS_REMOTE_IMAGING              1863  // 100
#define IDS_REMOTE_DIAL_UP              1864  // 100
#define IDS_REMOTE_AUDIO_SINK           1866  // 100
#define IDS_REMOTE_HEADSET              1867  // 100
#define IDS_REMOTE_HANDS_FREE           1868  // 100
#define IDS_REMOTE_INPUT_DEVICE         1869  // 100
#define IDS_REMOTE_PRINTING             1870  // 100
#define IDS_REMOTE_SIM_ACCESS           1871  // 100
#define IDS_REMOTE_MESSAGE_ACCESS       1984  // 100
#define IDS_REMOTE_PHONEBOOK           57931  // 100
#define IDS_REMOTE_SYNC                57933  // 100
#define IDS_REMOTE_GENERIC_ACCESS      57939  // 100

// States. "Paired" is appended to the first or second, behind ", ", in a buffer of 200 characters.
#define IDS_STATE_CONNECTED             1813  // 100
#define IDS_STATE_IDLE                  1814  // 100
#define IDS_STATE_PAIRED                1842  // 98
#define IDS_STATE_NOT_READY             1843  // 100

// Questions and refusals. The last has one text argument, the device's name.
#define IDS_STOP_CAPTION                1211  // 100
#define IDS_STOP_QUESTION               1212  // 200
#define IDS_DELETE_CAPTION              1213  // 100
#define IDS_DELETE_QUESTION             1214  // 260
#define IDS_REFUSAL_CAPTION             1215  // 100
#define IDS_REFUSAL_FORMAT              1216  // 200 %s

// The word after a size below 1024, which is formatted separately.
#define IDS_SIZE_BYTES                  1217  // 128
