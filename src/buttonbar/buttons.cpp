#include "buttonbar/buttons.h"

#include "resources/ids.h"

ButtonInfo ButtonTable[ButtonTotal] = {
    {IDM_FILE_OPEN, true},         {IDM_FILE_PREVIOUS, false},
    {IDM_FILE_NEXT, false},        {IDM_FILE_PRINT, false},
    {IDM_FILE_INFORMATION, false}, {IDM_EDIT_COPY, false},
    {IDM_SEARCH_FIND, false},      {IDM_SEARCH_FIND_NEXT, false, true},
    {IDM_VIEW_TEXT, true},         {IDM_VIEW_HEX, true},
    {IDM_VIEW_ZIP, false},         {IDM_OPTIONS_FONT, true},
    {IDM_OPTIONS_COLOURS, true},   {IDM_HELP_CONTENTS, true},
    {IDM_FILE_LAUNCH, false},      {IDM_VIEW_REDISPLAY_ZIP, false},
    {IDM_FILE_CLOSE, true},        {IDM_FILE_EXIT, true},
    {IDM_SEARCH_GOTO, false},      {IDM_EDIT_FILE, false},
    {IDM_FILE_DELETE, false},      {IDM_VIEW_LOCK, false},
    {IDM_FONT_INCREASE, false},    {IDM_FONT_DECREASE, false},
};
