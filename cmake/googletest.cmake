# GTest::gtest_main: the installed GoogleTest; for another machine, built from the sources that Debian's package
# googletest installs.
set(QSV_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Sources of GoogleTest, for building for another machine")
find_package(GTest QUIET)

function(qsv_build_googletest)   # a function, so that what it sets ends with it
  set(BUILD_SHARED_LIBS OFF)
  set(INSTALL_GTEST OFF CACHE INTERNAL "")
  set(BUILD_GMOCK OFF CACHE INTERNAL "")
  add_subdirectory(${QSV_GOOGLETEST_SOURCE} googletest EXCLUDE_FROM_ALL)
endfunction()

if(NOT GTest_FOUND AND EXISTS ${QSV_GOOGLETEST_SOURCE}/CMakeLists.txt)
  qsv_build_googletest()
elseif(NOT GTest_FOUND)
  message(FATAL_ERROR "The tests need GoogleTest: install it (Debian: libgtest-dev, or googletest to build for "
    "another machine) or configure with -DQSV_BUILD_TESTS=OFF.")
endif()
include(GoogleTest)
