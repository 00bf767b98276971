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

# Puts the images into TARGET as the resources :/icons/NAME-SIZE.png. Call it in the folder that makes TARGET.
#   icon                                      16 32 48 128         the windows
#   tray tray-alt                             16 22 24 32 44 48    the tray icon and its second image
#   script insert backspace up down           16 32                buttons
function(quillbox_embed_icons TARGET)
  set(base ${CMAKE_CURRENT_BINARY_DIR}/icons)
  set(files)
  macro(embed NAME DRAWING)
    foreach(size ${ARGN})
      quillbox_render_icon(${DRAWING} ${size} ${base}/${NAME}-${size}.png)
      list(APPEND files ${base}/${NAME}-${size}.png)
    endforeach()
  endmacro()
  embed(icon quillbox 16 32 48 128)
  embed(tray quillbox-tray 16 22 24 32 44 48)
  embed(tray-alt quillbox-tray-alt 16 22 24 32 44 48)
  foreach(action script insert backspace up down)
    embed(${action} actions/${action} 16 32)
  endforeach()
  qt6_add_resources(${TARGET} icons PREFIX /icons BASE ${base} FILES ${files})
endfunction()
