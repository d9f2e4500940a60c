#pragma once

#include "../MacDeclarations.h"
