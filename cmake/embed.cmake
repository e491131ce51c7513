# Text files and icons go into the programs themselves, so that nothing has to be found at run time.

# kv_embed_text(target pattern...): `const char* EmbeddedText(std::string_view name)` finds each file by its name without folder.
function(kv_embed_text target)
  file(GLOB files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${ARGN})
  set(out ${CMAKE_CURRENT_BINARY_DIR}/embedded_${target}.cpp)
  list(TRANSFORM files PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE paths)
  add_custom_command(OUTPUT ${out}
    COMMAND ${CMAKE_COMMAND} "-DFILES=${paths}" -DOUT=${out} -P ${PROJECT_SOURCE_DIR}/cmake/embed_text.cmake
    DEPENDS ${paths} ${PROJECT_SOURCE_DIR}/cmake/embed_text.cmake VERBATIM)
  target_sources(${target} PRIVATE ${out})
endfunction()

# kv_embed_icons(target pattern...): the icons as Qt resources under ":/icons/".
function(kv_embed_icons target)
  file(GLOB files CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${ARGN})
  set(qrc ${CMAKE_CURRENT_BINARY_DIR}/icons_${target}.qrc)
  set(text "<RCC><qresource prefix=\"/icons\">\n")
  foreach(file ${files})
    get_filename_component(name ${file} NAME)
    string(APPEND text "<file alias=\"${name}\">${PROJECT_SOURCE_DIR}/${file}</file>\n")
  endforeach()
  file(CONFIGURE OUTPUT ${qrc} CONTENT "${text}</qresource></RCC>\n" @ONLY)
  set_target_properties(${target} PROPERTIES AUTORCC ON)
  target_sources(${target} PRIVATE ${qrc})
endfunction()
