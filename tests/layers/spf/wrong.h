#pragma once

#include "spfxml/higher.h"
