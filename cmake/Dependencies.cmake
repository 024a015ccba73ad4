# Boost, GoogleTest, CLI11 and nlohmann-json. Natively they come from the system; for Windows they are cross-built from
# the sources that the system's packages carry (`./dev` puts Boost's under build/deps).
find_package(Threads REQUIRED)
set(TARNEX_DEPS_DIR ${CMAKE_SOURCE_DIR}/build/deps CACHE PATH "Prepared third-party sources")

if(WIN32 AND CMAKE_CROSSCOMPILING)
  set(boost_fs ${TARNEX_DEPS_DIR}/boost/libs/filesystem)
  if(NOT EXISTS ${boost_fs}/src/path.cpp)
    message(FATAL_ERROR "Boost.Filesystem's sources are missing below ${TARNEX_DEPS_DIR}: "
                        "run ./dev build, which fetches them")
  endif()
  add_library(tarnex_boost_filesystem STATIC
    ${boost_fs}/src/codecvt_error_category.cpp ${boost_fs}/src/directory.cpp
    ${boost_fs}/src/exception.cpp ${boost_fs}/src/operations.cpp ${boost_fs}/src/path.cpp
    ${boost_fs}/src/path_traits.cpp ${boost_fs}/src/portability.cpp
    ${boost_fs}/src/unique_path.cpp ${boost_fs}/src/utf8_codecvt_facet.cpp
    ${boost_fs}/src/windows_file_codecvt.cpp)
  # The headers alone, never the native system's whole include folder.
  file(MAKE_DIRECTORY ${TARNEX_DEPS_DIR}/include)
  if(NOT EXISTS ${TARNEX_DEPS_DIR}/include/boost)
    file(CREATE_LINK /usr/include/boost ${TARNEX_DEPS_DIR}/include/boost SYMBOLIC)
  endif()
  target_include_directories(tarnex_boost_filesystem SYSTEM PUBLIC ${TARNEX_DEPS_DIR}/include)
  target_include_directories(tarnex_boost_filesystem PRIVATE ${boost_fs}/src)
  target_compile_definitions(tarnex_boost_filesystem
    PUBLIC BOOST_ALL_NO_LIB BOOST_FILESYSTEM_STATIC_LINK=1 BOOST_FILESYSTEM_NO_DEPRECATED
    PRIVATE BOOST_FILESYSTEM_SOURCE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00)
  target_compile_options(tarnex_boost_filesystem PRIVATE -w)
  add_library(tarnex_boost ALIAS tarnex_boost_filesystem)
else()
  find_package(Boost 1.81 REQUIRED COMPONENTS filesystem)
  add_library(tarnex_boost INTERFACE)
  target_link_libraries(tarnex_boost INTERFACE Boost::headers Boost::filesystem)
endif()

# For the command-line companion: headers alone, seen by both compilers through the same links.
file(MAKE_DIRECTORY ${TARNEX_DEPS_DIR}/include-tools)
foreach(folder CLI nlohmann)
  if(NOT EXISTS ${TARNEX_DEPS_DIR}/include-tools/${folder})
    file(CREATE_LINK /usr/include/${folder} ${TARNEX_DEPS_DIR}/include-tools/${folder} SYMBOLIC)
  endif()
endforeach()
foreach(library cli11 json)
  add_library(tarnex_${library} INTERFACE)
  target_include_directories(tarnex_${library} SYSTEM INTERFACE
    ${TARNEX_DEPS_DIR}/include-tools)
endforeach()

if(TARNEX_BUILD_TESTS)
  if(EXISTS /usr/src/googletest/CMakeLists.txt)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(gtest_force_shared_crt ON CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    if(NOT MSVC)
      # Nobody measures or debugs it, and optimising it takes longer than the library.
      foreach(library gtest gmock gtest_main)
        target_compile_options(${library} PRIVATE -O0 -g0)
      endforeach()
    endif()
  else()
    find_package(GTest REQUIRED)
  endif()
endif()
