// The string identifiers of Vl2Res.dll: the one list, for every language and every program.
//
// To add one: a line here and a text in every strings_*.rc. A language holds either all texts or none:
// Windows falls back to English by blocks of 16 identifiers, so that a single missing text would be empty.
#pragma once

// The Send-To folder and its links: these name files and folders.
#define IDS_SENDTO_FOLDER              667
#define IDS_SENDTO_OTHER_DEVICE        2503

// Services of the stack's own: names and what a remote device offers with them.
#define IDS_NAME_STACK_1               630
#define IDS_NAME_STACK_2_3             625
#define IDS_NAME_STACK_4               629
#define IDS_NAME_STACK_5               626
#define IDS_NAME_STACK_6               627
#define IDS_NAME_STACK_7               628
#define IDS_REMOTE_STACK_1             624
#define IDS_REMOTE_STACK_2             620
#define IDS_REMOTE_STACK_3             617
#define IDS_REMOTE_STACK_4             623
#define IDS_REMOTE_STACK_6             621
#define IDS_REMOTE_STACK_7             622

// Kinds of devices: minor classes. The first also names a device that has no name, in files too.
#define IDS_DEVICE_UNKNOWN             1101
#define IDS_DEVICE_DESKTOP             1103
#define IDS_DEVICE_SERVER              1104
#define IDS_DEVICE_LAPTOP              1105
#define IDS_DEVICE_HANDHELD            1106
#define IDS_DEVICE_PALM_SIZE           1107
#define IDS_DEVICE_WEARABLE_COMPUTER   1108
#define IDS_DEVICE_PHONE               1109
#define IDS_DEVICE_CELLULAR            1110
#define IDS_DEVICE_CORDLESS            1111
#define IDS_DEVICE_SMARTPHONE          1112
#define IDS_DEVICE_MODEM               1113
#define IDS_DEVICE_ISDN                1114
#define IDS_DEVICE_SIM_READER          1115
#define IDS_DEVICE_ACCESS_POINT        1116
#define IDS_DEVICE_AUDIO               1124
#define IDS_DEVICE_HEADSET             1125
#define IDS_DEVICE_HANDS_FREE          1126
#define IDS_DEVICE_MICROPHONE          1128
#define IDS_DEVICE_LOUDSPEAKER         1129
#define IDS_DEVICE_HEADPHONES          1130
#define IDS_DEVICE_PORTABLE_AUDIO      1131
#define IDS_DEVICE_CAR_AUDIO           1132
#define IDS_DEVICE_SET_TOP_BOX         1133
#define IDS_DEVICE_HIFI                1134
#define IDS_DEVICE_VIDEO_RECORDER      1135
#define IDS_DEVICE_VIDEO_CAMERA        1136
#define IDS_DEVICE_CAMCORDER           1137
#define IDS_DEVICE_VIDEO_MONITOR       1138
#define IDS_DEVICE_VIDEO_DISPLAY       1139
#define IDS_DEVICE_VIDEO_CONFERENCE    1140
#define IDS_DEVICE_TOY                 1141
#define IDS_DEVICE_KEYBOARD            1142
#define IDS_DEVICE_POINTER             1143
#define IDS_DEVICE_KEYBOARD_POINTER    1144
#define IDS_DEVICE_JOYSTICK            1145
#define IDS_DEVICE_GAMEPAD             1146
#define IDS_DEVICE_REMOTE_CONTROL      1147
#define IDS_DEVICE_SENSOR              1148
#define IDS_DEVICE_DISPLAY             1149
#define IDS_DEVICE_CAMERA              1150
#define IDS_DEVICE_SCANNER             1151
#define IDS_DEVICE_PRINTER             1152
#define IDS_DEVICE_LOW_ENERGY          57941

// Kinds of devices: major classes, and the word for a kind that is not known.
#define IDS_KIND_UNKNOWN               1200
#define IDS_MAJOR_PHONE                1201
#define IDS_MAJOR_ACCESS_POINT         1202
#define IDS_MAJOR_AUDIO                1203
#define IDS_MAJOR_COMPUTER             1204
#define IDS_MAJOR_PERIPHERAL           1205
#define IDS_MAJOR_IMAGING              1206
#define IDS_MAJOR_UNCATEGORIZED        1207

// Names of services. The first also names an unknown class.
#define IDS_NAME_UNKNOWN               1153
#define IDS_NAME_SERIAL_PORT           1154
#define IDS_NAME_LAN_ACCESS            1155
#define IDS_NAME_DIAL_UP               1156
#define IDS_NAME_SYNC                  1157
#define IDS_NAME_SYNC_COMMAND          1158
#define IDS_NAME_HEADSET               1159
#define IDS_NAME_CORDLESS              1160
#define IDS_NAME_AUDIO_SOURCE          1161
#define IDS_NAME_AUDIO_SINK            1162
#define IDS_NAME_REMOTE_CONTROL_TARGET 1163
#define IDS_NAME_REMOTE_CONTROL        1164
#define IDS_NAME_INTERCOM              1165
#define IDS_NAME_FAX                   1166
#define IDS_NAME_HEADSET_GATEWAY       1167
#define IDS_NAME_PAN_USER              1168
#define IDS_NAME_ACCESS_POINT          1169
#define IDS_NAME_GROUP_NETWORK         1170
#define IDS_NAME_IMAGE_ARCHIVE         1172
#define IDS_NAME_REFERENCED_IMAGES     1173
#define IDS_NAME_HANDS_FREE            1174
#define IDS_NAME_HANDS_FREE_GATEWAY    1175
#define IDS_NAME_INPUT_DEVICE          1176
#define IDS_NAME_HARDCOPY              1177
#define IDS_NAME_SIM_ACCESS            1178
#define IDS_NAME_PNP                   1179
#define IDS_NAME_OBJECT_PUSH           1180
#define IDS_NAME_FILE_TRANSFER         1181
#define IDS_NAME_MESSAGE_ACCESS        1992
#define IDS_NAME_IMAGING               57669
#define IDS_NAME_PRINTING              57675
#define IDS_NAME_PHONEBOOK             57932
#define IDS_NAME_GENERIC_ACCESS        57940

// Appended to a serial port's name, in parentheses: one decimal number, at most 19 characters.
#define IDS_PORT_FORMAT                5022

// What this computer offers with a service.
#define IDS_LOCAL_AUDIO_SINK           1832
#define IDS_LOCAL_SERIAL_PORT          1844
#define IDS_LOCAL_OBJECT_PUSH          1845
#define IDS_LOCAL_FILE_TRANSFER        1846
#define IDS_LOCAL_CORDLESS             1847
#define IDS_LOCAL_AUDIO_SOURCE         1848
#define IDS_LOCAL_FAX                  1849
#define IDS_LOCAL_HEADSET_GATEWAY      1850
#define IDS_LOCAL_HANDS_FREE_GATEWAY   1851
#define IDS_LOCAL_PAN_USER             1852
#define IDS_LOCAL_ACCESS_POINT         1853
#define IDS_LOCAL_GROUP_NETWORK        1854
#define IDS_LOCAL_IMAGING              1855
#define IDS_LOCAL_PRINTING             57673

// What a remote device offers with a service.
#define IDS_REMOTE_SERIAL_PORT         1856
#define IDS_REMOTE_OBJECT_PUSH         1857
#define IDS_REMOTE_FILE_TRANSFER       1858
#define IDS_REMOTE_FAX                 1859
#define IDS_REMOTE_PAN_USER            1860
#define IDS_REMOTE_ACCESS_POINT        1861
#define IDS_REMOTE_GROUP_NETWORK       1862
#define IDS_REMOTE_IMAGING             1863
#define IDS_REMOTE_DIAL_UP             1864
#define IDS_REMOTE_AUDIO_SINK          1866
#define IDS_REMOTE_HEADSET             1867
#define IDS_REMOTE_HANDS_FREE          1868
#define IDS_REMOTE_INPUT_DEVICE        1869
#define IDS_REMOTE_PRINTING            1870
#define IDS_REMOTE_SIM_ACCESS          1871
#define IDS_REMOTE_MESSAGE_ACCESS      1984
#define IDS_REMOTE_PHONEBOOK           57931
#define IDS_REMOTE_SYNC                57933
#define IDS_REMOTE_GENERIC_ACCESS      57939

// States. The last but one is appended to the state of a device.
#define IDS_STATE_CONNECTED            1813
#define IDS_STATE_IDLE                 1814
#define IDS_STATE_PAIRED               1842
#define IDS_STATE_NOT_READY            1843

// Questions and refusals: captions below 100 characters, texts below 200, the question 1214 below 260.
// The last has one text argument, the device's name.
#define IDS_STOP_CAPTION               1211
#define IDS_STOP_QUESTION              1212
#define IDS_DELETE_CAPTION             1213
#define IDS_DELETE_QUESTION            1214
#define IDS_REFUSAL_CAPTION            1215
#define IDS_REFUSAL_FORMAT             1216

// The word after a size below 1024, which is formatted separately.
#define IDS_SIZE_BYTES                 1217
