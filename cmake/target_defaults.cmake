# qsv_target_defaults(<target>): what every target of this project compiles with.
include(${CMAKE_CURRENT_LIST_DIR}/warnings.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/strict_math.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/sanitizers.cmake)

function(qsv_target_defaults target)
  target_compile_options(${target} PRIVATE ${QSV_WARNINGS} ${QSV_STRICT_MATH} ${QSV_SANITIZE_OPTIONS})
  target_link_options(${target} PRIVATE ${QSV_SANITIZE_OPTIONS})
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 17
    CXX_STANDARD_REQUIRED ON
    CXX_EXTENSIONS OFF
    POSITION_INDEPENDENT_CODE ON
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
endfunction()
