# qsv_header_only(<target> <folder>): for another machine, where packages of this one are not searched, a library
# that has nothing but headers is taken from this machine all the same, and without what lies beside it.
set(QSV_HEADER_ONLY_FROM /usr/include CACHE PATH "Where libraries of headers lie, for building for another machine")

function(qsv_header_only target folder)
  if(TARGET ${target} OR NOT CMAKE_CROSSCOMPILING OR NOT EXISTS ${QSV_HEADER_ONLY_FROM}/${folder})
    return()
  endif()
  set(alone ${PROJECT_BINARY_DIR}/header_only/${folder})
  file(MAKE_DIRECTORY ${alone})
  file(CREATE_LINK ${QSV_HEADER_ONLY_FROM}/${folder} ${alone}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${alone})
endfunction()
