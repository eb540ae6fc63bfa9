// Numbers shared by the resource scripts and the program. The resource compiler reads this file
// too, so it holds nothing but #define lines and comments.
#ifndef KESTOVAR_RESOURCES_IDS_H
#define KESTOVAR_RESOURCES_IDS_H

// Child windows of the main window; the thumb pop-up is a child of the view.
#define ID_CHILD_VIEW 1
#define ID_CHILD_RULER 2
#define ID_CHILD_STATUS 3
#define ID_CHILD_BUTTONS 4
#define ID_CHILD_BUBBLE 5
#define ID_CHILD_THUMB 6

// Commands. The status line's help text for a command is string (command id - 200), see
// IDS_COMMAND_HELP_OFFSET; commands below 200 have a help string of their own.

// System menu.
#define IDM_SYSTEM_MENU_BAR 100
#define IDM_SYSTEM_SPARE 101 // no item of the program's own sends it

// File menu. The two IDM_KEY_ commands are what Ctrl+PgUp and Ctrl+PgDn send: unlike the menu items
// they can arrive while there is no previous or next file, and then beep.
#define IDM_FILE_OPEN 220
#define IDM_FILE_SAVE_AS 221
#define IDM_FILE_CLOSE 222
#define IDM_FILE_LAUNCH 223
#define IDM_FILE_DELETE 224
#define IDM_FILE_PREVIOUS 225
#define IDM_FILE_NEXT 226
#define IDM_KEY_PREVIOUS 227
#define IDM_KEY_NEXT 228
#define IDM_FILE_PRINT 229
#define IDM_FILE_PRINTER_SETUP 230
#define IDM_FILE_PAGE_SETUP 231
#define IDM_FILE_INFORMATION 232
#define IDM_FILE_EXIT 233

// Recent files, appended behind the File menu's last separator at run time.
#define IDM_RECENT_FIRST 240
#define IDM_RECENT_LAST 248

// Edit menu.
#define IDM_EDIT_COPY 250
#define IDM_EDIT_SELECT_ALL 251
#define IDM_EDIT_FILE 252

// Search menu.
#define IDM_SEARCH_FIND 260
#define IDM_SEARCH_FIND_NEXT 261
#define IDM_SEARCH_FIND_PREVIOUS 262
#define IDM_SEARCH_GOTO 263

// View menu.
#define IDM_VIEW_TEXT 270
#define IDM_VIEW_HEX 271
#define IDM_VIEW_ZIP 272
#define IDM_VIEW_REDISPLAY_ZIP 273
#define IDM_VIEW_LOCK 274
#define IDM_FONT_INCREASE 275
#define IDM_FONT_DECREASE 276

// Options menu.
#define IDM_OPTIONS_FONT 280
#define IDM_OPTIONS_PREFERENCES 281
#define IDM_OPTIONS_BUTTON_BAR 282
#define IDM_OPTIONS_COLOURS 283
#define IDM_OPTIONS_LINE_LENGTH 284
#define IDM_OPTIONS_SAVE 285

// Help menu.
#define IDM_HELP_CONTENTS 290
#define IDM_HELP_KEYBOARD 291
#define IDM_HELP_USING 292
#define IDM_HELP_ABOUT 293

// Commands the program sends to itself; no menu shows them.
#define IDM_INTERNAL_CLOSE 300
#define IDM_INTERNAL_REOPEN 301

// The SELECTLIST dialog.
#define IDC_SELECT_FILES 600
#define IDC_SELECT_PATH 601
#define IDC_SELECT_TYPE 602
#define IDC_SELECT_CHANGED 603
#define IDC_SELECT_SIZE 604
#define IDC_SELECT_ATTRIBUTES 605
#define IDC_SELECT_DETAILS 606
#define IDC_SELECT_SEPARATOR 607

// The CONFIRMDEL dialog; its buttons answer as they are numbered.
#define IDC_DELETE_PATH 330
#define IDC_DELETE_ICON 331
#define IDC_DELETE_YES 1
#define IDC_DELETE_NO 2

// The strip of button faces.
#define IDB_BUTTON_FACES 1

// The button that asks for help, in every dialog that has one.
#define IDC_ASK_HELP 998

// The BTNBAR dialog.
#define IDC_BAR_AVAILABLE 102
#define IDC_BAR_CHOSEN 103
#define IDC_BAR_ADD 104
#define IDC_BAR_REMOVE 105
#define IDC_BAR_UP 106
#define IDC_BAR_DOWN 107
#define IDC_BAR_BUBBLES 108

// The COLOURS dialog; IDC_COLOUR_FIRST + i is palette index i.
#define IDC_COLOUR_FIRST 300
#define IDC_COLOUR_LAST 315
#define IDC_COLOUR_REGION 320
#define IDC_COLOUR_SAMPLE 321
#define IDC_COLOUR_FOREGROUND 322
#define IDC_COLOUR_BACKGROUND 323

// The SETLEN dialog.
#define IDC_LINE_LENGTH 390

// The PREFER dialog.
#define IDC_PREFER_EBCDIC 800
#define IDC_PREFER_OEM 801
#define IDC_PREFER_EXPAND_TABS 810
#define IDC_PREFER_TAB_SIZE 811
#define IDC_PREFER_RULER 820
#define IDC_PREFER_SCROLL_BARS 821
#define IDC_PREFER_STATUS_LINE 822
#define IDC_PREFER_BUTTON_BAR 823
#define IDC_PREFER_EDITOR 830
#define IDC_PREFER_MINIMISE 831
#define IDC_PREFER_LOAD_ON_DELETE 832
#define IDC_PREFER_AUTO_ZIP 833
#define IDC_PREFER_MAXIMISE 834

// The FINFO dialog.
#define IDC_INFO_NAME 410
#define IDC_INFO_SIZE 411
#define IDC_INFO_TYPE 412
#define IDC_INFO_LINES 413
#define IDC_INFO_DATE 414
#define IDC_INFO_TIME 415
#define IDC_INFO_ATTRIBUTES 416
#define IDC_INFO_SEPARATOR 417
#define IDC_INFO_DESCRIPTION 418
#define IDC_INFO_VERSION 419
#define IDC_INFO_COMPANY 420
#define IDC_INFO_IMPORTS 421
#define IDC_INFO_MORE 422
#define IDC_INFO_GROUP 423

// The PRINTIT dialog
#define IDC_PRINT_ENTIRE 360
#define IDC_PRINT_SELECTION 361
#define IDC_PRINT_DEFAULT_FONT 362
#define IDC_PRINT_FORM_FEEDS 363
#define IDC_PRINT_WRAP 364
#define IDC_PRINT_HEADERS 365
#define IDC_PRINT_PRINTER_SETUP 366
#define IDC_PRINT_PAGE_SETUP 367
#define IDC_PRINT_PRINTER 368

// The PrintDlgBox dialog
#define IDC_STATUS_DOCUMENT 340
#define IDC_STATUS_PAGE 341

// The PAGESETUP dialog
#define IDC_PAGE_LEFT 430
#define IDC_PAGE_TOP 431
#define IDC_PAGE_BOTTOM 432
#define IDC_PAGE_RIGHT 433
#define IDC_PAGE_HEADER 434
#define IDC_PAGE_FOOTER 435
#define IDC_PAGE_USE_HEAD_FONT 437
#define IDC_PAGE_HEAD_FONT 438
#define IDC_PAGE_USE_BODY_FONT 440
#define IDC_PAGE_BODY_FONT 441

// The FIND dialog.
#define IDC_FIND_TEXT 350
#define IDC_FIND_HEX 351
#define IDC_FIND_FORWARDS 352
#define IDC_FIND_BACKWARDS 353
#define IDC_FIND_ENTIRE 354
#define IDC_FIND_CURRENT 355
#define IDC_FIND_CASE 356
#define IDC_FIND_SCROLL 357
#define IDC_FIND_TOP 358
#define IDC_FIND_MIDDLE 359

// The GOTO dialog.
#define IDC_GOTO_PROMPT 380
#define IDC_GOTO_TEXT 381

// Strings: help of the system menu and of the menu bar's popups, shown while a popup is open.
#define IDS_HELP_SYSTEM_MENU 1
#define IDS_HELP_FILE_MENU 2
#define IDS_HELP_EDIT_MENU 3
#define IDS_HELP_SEARCH_MENU 4
#define IDS_HELP_VIEW_MENU 5
#define IDS_HELP_OPTIONS_MENU 6
#define IDS_HELP_HELP_MENU 8

// Strings: help of the system menu's items.
#define IDS_HELP_RESTORE 10
#define IDS_HELP_MOVE 11
#define IDS_HELP_SIZE 12
#define IDS_HELP_MINIMIZE 13
#define IDS_HELP_MAXIMIZE 14
#define IDS_HELP_SYSTEM_CLOSE 15
#define IDS_HELP_TASK_LIST 16
#define IDS_HELP_MENU_BAR 17
#define IDS_HELP_SPARE 18 // has no text

// Strings: help of the menu commands, each its command id less this offset (220 Open is string 20).
#define IDS_COMMAND_HELP_OFFSET 200
#define IDS_HELP_LAUNCH 23
#define IDS_HELP_RECENT 40
#define IDS_HELP_EDIT_FILE 52

// Strings: the Open dialog's standard filter and the messages.
#define IDS_OPEN_FILTER 100
#define IDS_VALUE_INVALID 101
#define IDS_NO_CLIPBOARD 102
#define IDS_CLIPBOARD_TRUNCATED 103
#define IDS_GOTO_INVALID 104
#define IDS_COMMAND_LINE_ERROR 105
#define IDS_NO_MATCHES 106
#define IDS_NO_BUFFERS 107
#define IDS_CANNOT_OPEN 108
#define IDS_NO_STATUS 109
#define IDS_FILE_CHANGED 110
#define IDS_MARGINS_INVALID 111
#define IDS_NO_PRINTER 112
#define IDS_PRINT_FAILED 113
#define IDS_SELECT_LOCK_AREA 116
#define IDS_NOT_FOUND 117
#define IDS_LIST_TRUNCATED 118
#define IDS_SELECTING 119
#define IDS_READING 120
#define IDS_LAUNCH_ASSOCIATED_FAILED 122
#define IDS_ZIP_ERROR 123
#define IDS_NO_ZIP_STORAGE 124
#define IDS_SAVE_FAILED 125
#define IDS_ZIP_VERSION 126
#define IDS_UNZIP_START_FAILED 127
#define IDS_OVERWRITE 128
#define IDS_EXPANDED_DELETE_FAILED 129
#define IDS_UNZIP_FAILED 130
#define IDS_UNZIP_PROGRESS 131
#define IDS_UNZIP_CONTINUE 132
#define IDS_LAUNCH_PROGRAM_FAILED 133
#define IDS_HELP_LAUNCH_PROGRAM 134
#define IDS_DELETE_FAILED 137
#define IDS_LAUNCH_EDITOR_FAILED 138
#define IDS_TAB_SIZE_INVALID 139
#define IDS_CANNOT_REOPEN 140
#define IDS_DELETED 141

// Strings: the name of file type code n (1 to 11) is string IDS_FILE_TYPE + n. Code 0, a file not
// recognised, has no name; its number is the delete message above.
#define IDS_FILE_TYPE 141
#define IDS_FILE_TYPE_FIRST 142
#define IDS_FILE_TYPE_LAST 152

// Strings: the name of colour region n (0 to 4) is string IDS_REGION_FIRST + n.
#define IDS_REGION_FIRST 162
#define IDS_REGION_LAST 166

// Strings: dialog and status line texts.
#define IDS_NOT_APPLICABLE 167
#define IDS_VERSION_INFORMATION 168
#define IDS_IMPORTED_LIBRARIES 169
#define IDS_PROMPT_OFFSET 170
#define IDS_PROMPT_LINE 171
#define IDS_HIDE_MENU_BAR 172
#define IDS_LINE_FORMAT 174
#define IDS_FILE_FORMAT 175
#define IDS_DETAILS_SHOW 176
#define IDS_DETAILS_HIDE 177
#define IDS_ATTRIBUTE_READ_ONLY 178
#define IDS_ATTRIBUTE_ARCHIVE 179
#define IDS_ATTRIBUTE_SYSTEM 180
#define IDS_ATTRIBUTE_HIDDEN 181
#define IDS_HEADER_FONT 182
#define IDS_LABEL_LINE 183
#define IDS_LABEL_OFFSET 184
#define IDS_BODY_FONT 185

// Strings: the bubble of button n (0 to 23) is string IDS_BUBBLE_FIRST + n.
#define IDS_BUBBLE_FIRST 500
#define IDS_BUBBLE_LAST 523

#endif
