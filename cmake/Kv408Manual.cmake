# The target `manual`: the user manual as HTML, made by pandoc out of docs/manual, in the build tree's
# folder `manual`. Without pandoc there is no such target, and everything else is built all the same.

find_program(PANDOC pandoc)
if(NOT PANDOC)
  message(STATUS "pandoc is missing: the manual is not made")
  return()
endif()

set(manual_source ${CMAKE_SOURCE_DIR}/docs/manual)
set(manual_made ${CMAKE_BINARY_DIR}/manual)
set(manual_form ${manual_source}/html)
set(manual_common ${manual_form}/page.html ${manual_form}/links.lua ${manual_form}/chapters.yaml)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${manual_form}/chapters.yaml)
file(STRINGS ${manual_form}/chapters.yaml manual_chapters REGEX "{file:")
list(TRANSFORM manual_chapters REPLACE ".*{file: ([a-z-]+),.*" "\\1")
list(PREPEND manual_chapters index)
set(manual_files)

# kv408_manual_page(<Markdown file> <name> <page before> <page after>): <name>.html.
function(kv408_manual_page source name before after)
  set(page ${manual_made}/${name}.html)
  set(options --toc --toc-depth=3)
  if(name STREQUAL index)
    set(options)
  endif()
  if(before)
    list(APPEND options --variable=before:${before})
  endif()
  if(after)
    list(APPEND options --variable=after:${after})
  endif()
  # The first heading is the page's title.
  file(STRINGS ${source} headings REGEX "^# " LIMIT_COUNT 1)
  string(REGEX REPLACE "^# " "" title "${headings}")
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
  add_custom_command(OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${manual_made}
    COMMAND ${PANDOC} --from=gfm --to=html5 --standalone --wrap=preserve --columns=100000
            --template=${manual_form}/page.html --lua-filter=${manual_form}/links.lua
            --metadata-file=${manual_form}/chapters.yaml "--metadata=pagetitle:${title}"
            ${options} --output=${page} ${source}
    DEPENDS ${source} ${manual_common} VERBATIM)
  set(manual_files ${manual_files} ${page} PARENT_SCOPE)
endfunction()

list(LENGTH manual_chapters manual_count)
foreach(chapter IN LISTS manual_chapters)
  list(FIND manual_chapters ${chapter} place)
  math(EXPR next "${place} + 1")
  math(EXPR previous "${place} - 1")
  set(before)
  set(after)
  if(place GREATER 0)
    list(GET manual_chapters ${previous} before)
  endif()
  if(next LESS manual_count)
    list(GET manual_chapters ${next} after)
  endif()
  set(source ${manual_source}/${chapter}.md)
  if(chapter STREQUAL accuracy)
    set(source ${CMAKE_SOURCE_DIR}/docs/accuracy.md) # printed by a program of its own
  endif()
  kv408_manual_page(${source} ${chapter} "${before}" "${after}")
endforeach()

file(GLOB manual_pictures CONFIGURE_DEPENDS ${manual_source}/images/*.png)
set(manual_copied ${manual_made}/copied)
add_custom_command(OUTPUT ${manual_copied}
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${manual_made}/images
  COMMAND ${CMAKE_COMMAND} -E copy_directory ${manual_source}/images ${manual_made}/images
  COMMAND ${CMAKE_COMMAND} -E copy ${manual_form}/manual.css ${manual_made}/manual.css
  COMMAND ${CMAKE_COMMAND} -E touch ${manual_copied}
  DEPENDS ${manual_pictures} ${manual_form}/manual.css VERBATIM)
add_custom_target(manual ALL DEPENDS ${manual_files} ${manual_copied})
