#pragma once

#include "../line/fault.h"
