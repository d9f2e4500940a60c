#pragma once

// By this name the headers of GNUstep ask for what Debian keeps elsewhere.
#include <Block.h>
