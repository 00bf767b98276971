find_package(PkgConfig REQUIRED)

# Keysyms, which X11, Wayland and the portal share.
pkg_check_modules(XKB REQUIRED IMPORTED_TARGET xkbcommon)
quillbox_library(quillbox_xkb platform/xkb)
target_link_libraries(quillbox_xkb PUBLIC quillbox_base PkgConfig::XKB)

# The ports' side on X11, without Qt: clipboard and key sender.
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-xfixes xcb-xtest xcb-xkb xkbcommon xkbcommon-x11)
quillbox_library(quillbox_x11 platform/x11)
target_link_libraries(quillbox_x11 PUBLIC quillbox_base quillbox_xkb PkgConfig::XCB)
quillbox_precompile(quillbox_x11 <xcb/xcb.h>)

# The protocols' descriptions as C, which is what the scanner writes.
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
file(GLOB PROTOCOLS CONFIGURE_DEPENDS platform/wayland/protocols/*.xml)
set(PROTOCOL_FOLDER ${CMAKE_CURRENT_BINARY_DIR}/protocols)
file(MAKE_DIRECTORY ${PROTOCOL_FOLDER})
foreach(protocol ${PROTOCOLS})
  get_filename_component(name ${protocol} NAME_WE)
  add_custom_command(OUTPUT ${PROTOCOL_FOLDER}/${name}.c ${PROTOCOL_FOLDER}/${name}.h
    COMMAND ${WAYLAND_SCANNER} private-code ${protocol} ${PROTOCOL_FOLDER}/${name}.c
    COMMAND ${WAYLAND_SCANNER} client-header ${protocol} ${PROTOCOL_FOLDER}/${name}.h
    DEPENDS ${protocol} VERBATIM)
  list(APPEND PROTOCOL_SOURCES ${PROTOCOL_FOLDER}/${name}.c ${PROTOCOL_FOLDER}/${name}.h)
endforeach()
add_library(quillbox_protocols STATIC ${PROTOCOL_SOURCES})
target_include_directories(quillbox_protocols SYSTEM PUBLIC ${PROTOCOL_FOLDER})
target_link_libraries(quillbox_protocols PUBLIC PkgConfig::WAYLAND)

# The ports' side on Wayland, without Qt.
quillbox_library(quillbox_wayland platform/wayland)
target_link_libraries(quillbox_wayland PUBLIC quillbox_base quillbox_xkb quillbox_protocols)
quillbox_precompile(quillbox_wayland <wayland-client.h>)

# What a person sees: Qt's side of the ports, and the views.
find_package(Qt6 REQUIRED COMPONENTS Widgets DBus)
quillbox_library(quillbox_qt platform/qt/base platform/qt/ports platform/qt/widgets platform/qt/views)
target_link_libraries(quillbox_qt PUBLIC quillbox_core quillbox_linux Qt6::Widgets Qt6::DBus PkgConfig::XCB)
target_compile_definitions(quillbox_qt PUBLIC QT_NO_KEYWORDS)
quillbox_precompile(quillbox_qt <QLabel> <QPainter> <QApplication> <QTimer>)
include(${PROJECT_SOURCE_DIR}/cmake/Icons.cmake)
quillbox_embed_icons(quillbox_qt)

# Keys through the desktop's portal. Its answers are D-Bus signals, which Qt hands to declared slots only.
quillbox_library(quillbox_portal platform/qt/portal)
set_target_properties(quillbox_portal PROPERTIES AUTOMOC ON)
target_link_libraries(quillbox_portal PUBLIC quillbox_linux quillbox_xkb Qt6::Core Qt6::DBus)
target_compile_definitions(quillbox_portal PUBLIC QT_NO_KEYWORDS QUILLBOX_APP_ID="${QUILLBOX_APP_ID}")

# The program itself.
file(GLOB PROGRAM_SOURCES CONFIGURE_DEPENDS platform/qt/*.cpp)
add_executable(quillbox main.cpp ${PROGRAM_SOURCES})
target_link_libraries(quillbox PRIVATE quillbox_qt quillbox_x11 quillbox_wayland quillbox_portal)
set_target_properties(quillbox PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)

# The sound module, loaded with the first sound. Without Qt's multimedia the program is built all the same and is
# silent.
find_package(Qt6 QUIET OPTIONAL_COMPONENTS Multimedia)
if(TARGET Qt6::Multimedia)
  file(GLOB SOUND_SOURCES CONFIGURE_DEPENDS platform/qt/sound/*.cpp)
  add_library(quillbox-sound MODULE ${SOUND_SOURCES})
  target_link_libraries(quillbox-sound PRIVATE quillbox_options Qt6::Multimedia)
  target_compile_definitions(quillbox-sound PRIVATE QT_NO_KEYWORDS)
  set_target_properties(quillbox-sound PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()
