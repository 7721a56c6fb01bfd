#pragma once

#include "../spfxml/higher.h"
/* #include "plugin.h" */
