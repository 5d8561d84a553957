#include "displaylist/platform/change_counter.h"

LM_Library LUMEN;
