# How every target of this tree is built: language level, warnings, sanitizers, and the one way
# to declare a folder's library, a folder's tests and a folder's benchmarks.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# On for what is compiled for tests alone; tests/ sets the variable.
define_property(TARGET PROPERTY KV408_TEST INITIALIZE_FROM_VARIABLE KV408_TEST)

# The common options; every library links it, so that every user inherits the include root.
add_library(kv408_options INTERFACE)
target_include_directories(kv408_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(kv408_options INTERFACE -Wall -Wextra -Wconversion -Werror
  # In sources that are compiled as one unit a name may hide that of another one: nobody is misled.
  $<$<NOT:$<BOOL:$<TARGET_PROPERTY:KV408_MERGED>>>:-Wshadow>)
if(KV408_SANITIZE)
  target_compile_options(kv408_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer
    # A third of the time that the tests take to compile went into looking at the pointer at each access
    # to a member that they make. The address sanitizer stops at a null pointer just the same.
    $<$<BOOL:$<TARGET_PROPERTY:KV408_TEST>>:-fno-sanitize=null,alignment,object-size,vptr,nonnull-attribute,returns-nonnull-attribute>)
  target_link_options(kv408_options INTERFACE -fsanitize=address,undefined)
endif()

# Names of a folder's sources must differ for this, even in unnamed namespaces, and a change of one has
# its whole folder compiled again.
if(KV408_MERGE_SOURCES)
  set(merge_sources UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0 KV408_MERGED ON)
endif()

# What is not on the way from samples to pixels is compiled for size: its code is a third of what
# kv408-server takes of the small machine's memory that stands beside an instrument, which runs Linux.
set(small_folders autoset calibration config doctor export remote scope server)
set(small_options "")
if(NOT WIN32)
  set(small_options $<$<CONFIG:Release>:-Os>)
endif()

include(Kv408Precompiled)
kv408_precompile(standard)
kv408_precompile(small)
target_compile_options(kv408_precompiled_small PRIVATE ${small_options})

# kv408_library(<folder> <library>...): the library kv408_<folder> out of every source file of
# the current folder and, but on Windows, of its folder posix; the libraries it names are the folders
# it may include from.
function(kv408_library folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT WIN32)
    file(GLOB posix_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/posix/*.cpp)
    list(APPEND sources ${posix_sources})
  endif()
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(sources)
    add_library(kv408_${folder} ${sources} ${headers})
    target_link_libraries(kv408_${folder} PUBLIC kv408_options ${ARGN})
    if(KV408_MERGE_SOURCES)
      set_target_properties(kv408_${folder} PROPERTIES ${merge_sources})
    endif()
    if(folder MATCHES "^(ui|demo)$")
      kv408_use_precompiled(kv408_${folder} widgets)
    elseif(folder IN_LIST small_folders)
      target_compile_options(kv408_${folder} PRIVATE ${small_options})
      kv408_use_precompiled(kv408_${folder} small)
    else()
      kv408_use_precompiled(kv408_${folder} standard)
    endif()
  else()
    add_library(kv408_${folder} INTERFACE ${headers})
    target_link_libraries(kv408_${folder} INTERFACE kv408_options ${ARGN})
  endif()
endfunction()

# kv408_header_library(<folder> <header>...): gives the library of src/<folder> the headers of a library
# that is nothing else and so serves every system. They lie among this one's own: another system sees
# nothing but them.
function(kv408_header_library folder)
  if(CMAKE_CROSSCOMPILING)
    set(headers ${CMAKE_CURRENT_BINARY_DIR}/headers)
    file(MAKE_DIRECTORY ${headers})
    foreach(header IN LISTS ARGN)
      string(REGEX REPLACE "/.*" "" name ${header})
      file(CREATE_LINK /usr/include/${name} ${headers}/${name} SYMBOLIC)
    endforeach()
  else()
    find_path(KV408_HEADERS_OF_${folder} NAMES ${ARGN} REQUIRED)
    set(headers ${KV408_HEADERS_OF_${folder}})
  endif()
  target_include_directories(kv408_${folder} SYSTEM PRIVATE ${headers})
endfunction()

# kv408_test_sources(<target> <variable> <source>...): what `target` is made of: these sources, or what the
# build tree KV408_TEST_OBJECTS, where it is set, has compiled them to for it.
function(kv408_test_sources target variable)
  if(KV408_TEST_OBJECTS)
    file(STRINGS ${KV408_TEST_OBJECTS}/test-objects/${target} objects)
    set_source_files_properties(${objects} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
    set(${variable} ${objects} PARENT_SCOPE)
  else()
    file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/test-objects/${target}
         CONTENT "$<JOIN:$<TARGET_OBJECTS:${target}>,\n>\n")
    set(${variable} ${ARGN} PARENT_SCOPE)
  endif()
endfunction()

# kv408_test_executable(<target> <source>...): an executable of these sources, which lie in tests/. Where
# KV408_TEST_OBJECTS is set it is linked from what the build tree there makes of them.
function(kv408_test_executable target)
  kv408_test_sources(${target} sources ${ARGN})
  add_executable(${target} ${sources})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# kv408_test_library(<target> <source>...): the same, a static library.
function(kv408_test_library target)
  kv408_test_sources(${target} sources ${ARGN})
  add_library(${target} STATIC ${sources})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()

# kv408_test_places(<target> (<name> <path>)...): what the target's sources know as kv408::place::<name>.
# It is no part of what another build tree links.
function(kv408_test_places target)
  set(places "#include \"support/places.h\"\n")
  while(ARGN)
    list(POP_FRONT ARGN name path)
    string(APPEND places "const char* const kv408::place::${name} = \"${path}\";\n")
  endwhile()
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${target}_places.cpp)
  file(GENERATE OUTPUT ${source} CONTENT "${places}")
  add_library(${target}_places STATIC ${source})
  target_include_directories(${target}_places PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${target} PRIVATE ${target}_places)
endfunction()

# kv408_precompiled_test(<target>): its sources, where they are compiled here, read GoogleTest's headers and
# the standard library's as tests/ has had them compiled.
function(kv408_precompiled_test target)
  if(NOT KV408_TEST_OBJECTS)
    kv408_use_precompiled(${target} gtest)
  endif()
endfunction()

# kv408_merged_test(<target>): its sources are one unit, where KV408_MERGE_TESTS is set and they are compiled here.
function(kv408_merged_test target)
  if(KV408_MERGE_TESTS AND NOT KV408_TEST_OBJECTS)
    set_target_properties(${target} PROPERTIES
      UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0 KV408_MERGED ON)
  endif()
endfunction()

# kv408_tests(<folder> <library>...): the GoogleTest program test_<folder> out of every source
# file of the current folder, each of its tests known to ctest by its own name.
function(kv408_tests folder)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  kv408_test_executable(test_${folder} ${sources})
  target_link_libraries(test_${folder} PRIVATE kv408_options ${ARGN} GTest::gmock GTest::gtest_main)
  target_include_directories(test_${folder} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  kv408_precompiled_test(test_${folder})
  kv408_merged_test(test_${folder})
  if(NOT CMAKE_CROSSCOMPILING)
    # Goes between ctest and the program: ./test has run all of its tests in one process already.
    set_target_properties(test_${folder} PROPERTIES
      CROSSCOMPILING_EMULATOR ${CMAKE_SOURCE_DIR}/tests/support/one_test)
    set_property(GLOBAL APPEND PROPERTY kv408_test_programs $<TARGET_FILE:test_${folder}>)
  endif()
  gtest_discover_tests(test_${folder} TEST_PREFIX ${KV408_TEST_PREFIX}${folder}.
                       DISCOVERY_TIMEOUT 60)
endfunction()
