// Numbers shared between the program and its resources.
#pragma once

#define IDI_SCREENHOST 1
#define IDR_MENU 1
#define IDR_ACCELERATORS 1

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
#define ID_VIEW 200
#define ID_LOG 201
#define ID_STATUS 202
#define ID_LOG_TITLE 203
