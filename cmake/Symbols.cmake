# Pictures of the symbols, from the distribution's package; nothing of them lies in the repository.
find_path(TAVRIN_BOOTSTRAP_ICONS command.svg PATHS /usr/local/share /usr/share
  PATH_SUFFIXES bootstrap-icons/svg DOC "Folder of the package bootstrap-icons" REQUIRED)

# Embeds `pictures` (names without suffix) into a target, as :<prefix>/<name>.svg.
function(tavrin_embed_pictures target resource prefix)
  foreach(picture ${ARGN})
    set(file ${TAVRIN_BOOTSTRAP_ICONS}/${picture}.svg)
    set_source_files_properties(${file} PROPERTIES QT_RESOURCE_ALIAS ${picture}.svg)
    list(APPEND files ${file})
  endforeach()
  qt_add_resources(${target} ${resource} PREFIX ${prefix} FILES ${files})
endfunction()

# The pictures that the program's one table of symbols names.
function(tavrin_symbol_pictures result)
  set(table ${CMAKE_SOURCE_DIR}/src/Core/Shell/SymbolTable.h)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${table})
  file(STRINGS ${table} rows REGEX "^    {\"[^\"]+\", \"[^\"]+\"},$")
  list(TRANSFORM rows REPLACE "^    {\"[^\"]+\", \"([^\"]+)\"},$" "\\1")
  list(REMOVE_DUPLICATES rows)
  set(${result} ${rows} PARENT_SCOPE)
endfunction()
