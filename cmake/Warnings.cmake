# Our own code compiles without a warning; what Qt, GLib and xcb headers do is theirs.
add_library(tavrin_generated_warnings INTERFACE)
target_compile_options(tavrin_generated_warnings INTERFACE -Wall -Wextra -Werror -Wnon-virtual-dtor -Woverloaded-virtual)
target_compile_definitions(tavrin_generated_warnings INTERFACE
  QT_NO_CAST_TO_ASCII QT_NO_CAST_FROM_BYTEARRAY QT_USE_QSTRINGBUILDER QT_NO_KEYWORDS)

# Apart, because the code that the QML compiler generates shadows its own parameters.
add_library(tavrin_warnings INTERFACE)
target_compile_options(tavrin_warnings INTERFACE -Wshadow)
target_link_libraries(tavrin_warnings INTERFACE tavrin_generated_warnings)
