// Numbers of the skin's resources; read by the resource compiler too.
#ifndef WORKSTATION_SKIN_IDS_H
#define WORKSTATION_SKIN_IDS_H

// Bitmaps of the 100 % skin; those of the 200 % skin follow at this distance.
#define IDB_LARGE 1000

#define IDB_BUTTON 1001
#define IDB_BUTTON_CHECK 1002
#define IDB_WINDOW_FRAME 1003
#define IDB_CAPTION_BUTTON 1004
#define IDB_CAPTION_CLOSE 1005
#define IDB_CAPTION_MINIMIZE 1006
#define IDB_CAPTION_MAXIMIZE 1007
#define IDB_CAPTION_RESTORE 1008
#define IDB_TOOL_BAR 1009
#define IDB_TOOL_BAR_BUTTON 1010
#define IDB_STATUS_BAR 1011
#define IDB_STATUS_BAR_PANE 1012
#define IDB_WINDOW_BACKGROUND 1100

// A picture, in both sizes.
#define IDB_TEETH 1101

// Captions of the message box.
#define IDS_OK 3001
#define IDS_CANCEL 3002
#define IDS_ABORT 3003
#define IDS_RETRY 3004
#define IDS_IGNORE 3005
#define IDS_IGNORE_ALL 3006
#define IDS_CONTINUE 3007
#define IDS_YES 3008
#define IDS_YES_TO_ALL 3009
#define IDS_NO 3010
#define IDS_NO_TO_ALL 3011
#define IDS_SAVE 3012
#define IDS_DISCARD 3013
#define IDS_HELP 3014
#define IDS_DO_NOT_SHOW_AGAIN 3015
#define IDS_REMEMBER_ANSWER 3016

// Texts of the main window.
#define IDS_TITLE 3101
#define IDS_FIRST 3102
#define IDS_PREVIOUS 3103
#define IDS_NEXT 3104
#define IDS_LAST 3105
#define IDS_PICTURES 3106
#define IDS_CLOSE 3107
#define IDS_NAME 3108
#define IDS_FIRST_NAME 3109
#define IDS_BORN 3110
#define IDS_NUMBER 3111
#define IDS_PATIENTS 3112
#define IDS_PICTURES_FOUND 3113
#define IDS_READY 3114
#define IDS_SAVE_PATIENT 3115
#define IDS_PATIENT_SAVED 3116
#define IDS_NO_BIRTHDAY 3117
#define IDS_NOT_SAVED 3118

// Messages.
#define IDS_BOX_TITLE 3201
#define IDS_BOX_DONE 3202
#define IDS_BOX_DELETE 3203
#define IDS_BOX_LOST 3204
#define IDS_BOX_SAVE 3205
#define IDS_BOX_MILLING 3206
#define IDS_BOX_BIRTHDAY 3207
#define IDS_BOX_LONG 3208

// Of the patient card.
#define IDS_CARD 3151
#define IDS_CLICK_TOOTH 3152
#define IDS_TOOTH 3153
#define IDS_NO_TOOTH 3154

#define IDD_CARD 200

#endif
