# What a program for Windows carries within itself besides its code, and where its Qt is looked for.

# Where packages are only looked for below the target's own roots, the folders that the builder names
# are roots too.
if(CMAKE_CROSSCOMPILING)
  list(APPEND CMAKE_FIND_ROOT_PATH ${CMAKE_PREFIX_PATH})
endif()

# kv408_windows_resources(<target> <description>): icon, version and manifest.
function(kv408_windows_resources target description)
  find_program(RSVG_CONVERT rsvg-convert REQUIRED)
  find_program(ICOTOOL icotool REQUIRED)
  set(KV408_ICON ${CMAKE_BINARY_DIR}/kv408.ico)
  if(NOT TARGET kv408_icon)
    set(pictures)
    foreach(size 16 24 32 48 64 128 256)
      set(picture ${CMAKE_BINARY_DIR}/kv408-${size}.png)
      add_custom_command(OUTPUT ${picture}
        COMMAND ${RSVG_CONVERT} --width ${size} --height ${size} --output ${picture}
                ${CMAKE_SOURCE_DIR}/packaging/icon/kv408.svg
        DEPENDS ${CMAKE_SOURCE_DIR}/packaging/icon/kv408.svg VERBATIM)
      list(APPEND pictures ${picture})
    endforeach()
    add_custom_command(OUTPUT ${KV408_ICON}
      COMMAND ${ICOTOOL} --create --output ${KV408_ICON} ${pictures}
      DEPENDS ${pictures} VERBATIM)
    add_custom_target(kv408_icon DEPENDS ${KV408_ICON})
  endif()
  set(KV408_NAME ${target})
  set(KV408_DESCRIPTION ${description})
  set(resources ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${resources} @ONLY)
  set_source_files_properties(${resources} PROPERTIES OBJECT_DEPENDS
    "${KV408_ICON};${CMAKE_SOURCE_DIR}/packaging/windows/kv408.manifest")
  target_sources(${target} PRIVATE ${resources})
  add_dependencies(${target} kv408_icon)
endfunction()
