# The page of "qsvtin view" is made of npm packages (three.js, and esbuild to bundle it), whose versions and checksums
# package-lock.json holds. AUTO: built when npm is there and can fetch them; ON: it must be; OFF: never.
set(QSV_VIEWER AUTO CACHE STRING "Build the viewer of qsvtin: AUTO, ON or OFF")
set_property(CACHE QSV_VIEWER PROPERTY STRINGS AUTO ON OFF)

# qsv_fetch_viewer(<folder> <result>): puts the sources and the npm packages into a folder, once for each lock file.
# <result> receives what went wrong, or nothing.
function(qsv_fetch_viewer folder result)
  find_program(QSV_NPM npm)
  find_program(QSV_NODE node)
  if(NOT QSV_NPM OR NOT QSV_NODE)
    set(${result} "npm was not found" PARENT_SCOPE)
    return()
  endif()
  file(COPY ${CMAKE_CURRENT_LIST_DIR}/viewer/package.json ${CMAKE_CURRENT_LIST_DIR}/viewer/package-lock.json
    DESTINATION ${folder})
  file(SHA256 ${folder}/package-lock.json lock)
  set(stamp ${folder}/fetched-${lock})
  if(NOT EXISTS ${stamp})
    message(STATUS "Fetching the npm packages of the viewer")
    execute_process(
      COMMAND ${QSV_NPM} ci --prefer-offline --ignore-scripts --no-audit --no-fund --fetch-retries=1
      WORKING_DIRECTORY ${folder}
      TIMEOUT 300
      RESULT_VARIABLE status OUTPUT_QUIET ERROR_VARIABLE errors)
    if(NOT status EQUAL 0)
      string(REGEX MATCH "npm error [^\n]* failed[^\n]*" reason "${errors}")
      set(${result} "npm ci failed (${status}) ${reason}" PARENT_SCOPE)
      return()
    endif()
    file(TOUCH ${stamp})
  endif()
  set(${result} "" PARENT_SCOPE)
endfunction()

# QSV_PAGE_TEXT: the source that holds the page.
set(QSV_PAGE_TEXT viewer/no_page_text.cpp)
if(QSV_VIEWER)
  set(qsv_viewer_dir ${CMAKE_CURRENT_BINARY_DIR}/viewer)
  qsv_fetch_viewer(${qsv_viewer_dir} qsv_viewer_problem)
  if(NOT qsv_viewer_problem)
    set(QSV_PAGE_TEXT ${qsv_viewer_dir}/page_text.cpp)
    set(qsv_viewer_sources build.mjs page.html viewer.js)
    list(TRANSFORM qsv_viewer_sources PREPEND ${CMAKE_CURRENT_LIST_DIR}/viewer/)
    add_custom_command(
      OUTPUT ${QSV_PAGE_TEXT}
      COMMAND ${CMAKE_COMMAND} -E copy ${qsv_viewer_sources} ${qsv_viewer_dir}
      COMMAND ${QSV_NODE} ${qsv_viewer_dir}/build.mjs ${QSV_PAGE_TEXT}
      DEPENDS ${qsv_viewer_sources} ${CMAKE_CURRENT_LIST_DIR}/viewer/package-lock.json
      VERBATIM)
  elseif(QSV_VIEWER STREQUAL "AUTO")
    message(STATUS "qsvtin is built without its viewer: ${qsv_viewer_problem}")
  else()
    message(FATAL_ERROR "The viewer of qsvtin cannot be built: ${qsv_viewer_problem}\n"
      "Install npm (Debian: npm), or configure with -DQSV_VIEWER=OFF.")
  endif()
endif()
