# Read by cpack before it packs. Two builds are the same, byte for byte: what has a time in the package has that of the
# changelog's newest entry.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  file(STRINGS ${CMAKE_CURRENT_LIST_DIR}/../packaging/debian-changelog released REGEX "^ -- ")
  string(REGEX REPLACE "^ -- .*@  " "" released "${released}")
  execute_process(COMMAND date -d ${released} +%s OUTPUT_VARIABLE released OUTPUT_STRIP_TRAILING_WHITESPACE
    COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{SOURCE_DATE_EPOCH} ${released})
endif()
