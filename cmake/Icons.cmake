# The program's drawings, rendered when the program is built.

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(QUILLBOX_ICON_FOLDER ${CMAKE_CURRENT_LIST_DIR}/../packaging/icons)

# Renders packaging/icons/DRAWING.svg to the file PNG, SIZE pixels wide and high.
function(quillbox_render_icon DRAWING SIZE PNG)
  set(svg ${QUILLBOX_ICON_FOLDER}/${DRAWING}.svg)
  get_filename_component(folder ${PNG} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${PNG}
    COMMAND ${RSVG_CONVERT} -w ${SIZE} -h ${SIZE} -o ${PNG} ${svg}
    DEPENDS ${svg} VERBATIM)
endfunction()

# Puts the images into TARGET as the resources :/icons/NAME-SIZE, bare pixels. Call it in the folder that makes
# TARGET.
#   icon                                      16 32 48 128         the windows
#   tray tray-alt                             16 22 24 32 44 48    the tray icon and its second image
#   script insert backspace up down           16 32                buttons
function(quillbox_embed_icons TARGET)
  set(base ${CMAKE_CURRENT_BINARY_DIR}/icons)
  add_executable(quillbox-icon-pixels ${PROJECT_SOURCE_DIR}/cmake/IconPixels.cpp)
  target_link_libraries(quillbox-icon-pixels PRIVATE quillbox_options Qt6::Gui)
  set(files)
  macro(embed NAME DRAWING)
    foreach(size ${ARGN})
      set(pixels ${base}/${NAME}-${size})
      quillbox_render_icon(${DRAWING} ${size} ${pixels}.png)
      add_custom_command(OUTPUT ${pixels} COMMAND quillbox-icon-pixels ${pixels}.png ${pixels}
        DEPENDS ${pixels}.png quillbox-icon-pixels VERBATIM)
      list(APPEND files ${pixels})
    endforeach()
  endmacro()
  embed(icon quillbox 16 32 48 128)
  embed(tray quillbox-tray 16 22 24 32 44 48)
  embed(tray-alt quillbox-tray-alt 16 22 24 32 44 48)
  foreach(action script insert backspace up down)
    embed(${action} actions/${action} 16 32)
  endforeach()
  # Packed they would be smaller on disk and larger in memory, with what unpacks them. The first format has no times of
  # files, so that two builds are the same.
  qt6_add_resources(${TARGET} icons PREFIX /icons BASE ${base} FILES ${files} OPTIONS --no-compress --format-version 1)
endfunction()
