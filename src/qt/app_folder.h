#pragma once
// The application folder is chosen below the Qt layer, so the command-line tools share it.
#include "platform/app_folder.h"
