# Our own code compiles without a warning; what Qt, GLib and xcb headers do is theirs.
add_library(tavrin_warnings INTERFACE)
target_compile_options(tavrin_warnings INTERFACE
  -Wall -Wextra -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(tavrin_warnings INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_USE_QSTRINGBUILDER QT_NO_KEYWORDS)
