# The ports' side on X11, without Qt: clipboard and key sender.
find_package(PkgConfig REQUIRED)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-xfixes xcb-xtest xcb-xkb xkbcommon xkbcommon-x11)
add_library(quillbox_x11 STATIC ${X11_SOURCES})
target_link_libraries(quillbox_x11 PUBLIC quillbox_linux PkgConfig::XCB)
quillbox_precompile(quillbox_x11 <xcb/xcb.h>)

# The program itself.
find_package(Qt6 REQUIRED COMPONENTS Widgets DBus)
file(GLOB QT_SOURCES CONFIGURE_DEPENDS platform/qt/*.cpp)
add_executable(quillbox main.cpp ${QT_SOURCES})
target_link_libraries(quillbox PRIVATE quillbox_x11 Qt6::Widgets Qt6::DBus)
target_compile_definitions(quillbox PRIVATE QT_NO_KEYWORDS)
quillbox_precompile(quillbox <QLabel> <QPainter> <QApplication> <QTimer>)
set_target_properties(quillbox PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
include(${PROJECT_SOURCE_DIR}/cmake/Icons.cmake)
quillbox_embed_icons(quillbox)

# The sound module, loaded with the first sound. Without Qt's multimedia the program is built all the same and is
# silent.
find_package(Qt6 QUIET OPTIONAL_COMPONENTS Multimedia)
if(TARGET Qt6::Multimedia)
  add_library(quillbox-sound MODULE platform/qt/sound/SoundModule.cpp)
  target_link_libraries(quillbox-sound PRIVATE quillbox_options Qt6::Multimedia)
  target_compile_definitions(quillbox-sound PRIVATE QT_NO_KEYWORDS)
  set_target_properties(quillbox-sound PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()
