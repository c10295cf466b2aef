// Numbers shared between the program and its resources.
#pragma once

#define IDI_SCREENHOST 1
#define IDR_MENU 1
#define IDR_ACCELERATORS 1
#define IDR_CONTROL_MENU 2
#define IDR_DESIGN_ACCELERATORS 2

#define CMD_READ 100
#define CMD_WRITE 101
#define CMD_DESIGN 102
#define CMD_RUN 103
#define CMD_SAVE 104
#define CMD_SAVE_AS 105
#define CMD_PICTURE 106
#define CMD_EXIT 107
#define CMD_ABOUT 108
#define CMD_CLEAR_LOG 109
#define CMD_NEW 110
#define CMD_OPEN 111
#define CMD_UNDO 112
#define CMD_REDO 113
#define CMD_CUT 114
#define CMD_COPY 115
#define CMD_PASTE 116
#define CMD_DELETE 117
#define CMD_SELECT_ALL 118
#define CMD_PROPERTIES 119
#define CMD_ABOUT_CONTROL 120
#define CMD_SNAP 121
#define CMD_ALIGN_LEFT 122
#define CMD_ALIGN_RIGHT 123
#define CMD_ALIGN_TOP 124
#define CMD_ALIGN_BOTTOM 125
#define CMD_SAME_WIDTH 126
#define CMD_SAME_HEIGHT 127
#define CMD_TOGGLE_MODE 128
#define CMD_NEXT_PANE 129
#define CMD_DEVICE_PANEL 130
#define CMD_COPY_LOG 131
#define CMD_FILTER_LOG 132
#define CMD_RECENT 300  // and the next seven
#define ID_VIEW 200
#define ID_LOG 201
#define ID_STATUS 202
#define ID_LOG_TITLE 203
#define ID_PALETTE 204  // and 205, its title
#define ID_DEVICE 206
#define ID_FILTER 207
#define ID_FILTER_LABEL 208
