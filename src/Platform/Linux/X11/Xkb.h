#pragma once

// The header names a field `explicit`, which is a word of the language.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
