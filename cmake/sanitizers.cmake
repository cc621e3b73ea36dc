# QSV_SANITIZE_OPTIONS: compile and link options for the sanitizers named in QSV_SANITIZE, a list such as
# "address;undefined". Any finding ends the program, so that a test run cannot pass over it.
set(QSV_SANITIZE_OPTIONS "")
if(QSV_SANITIZE)
  if(MSVC)
    message(FATAL_ERROR "QSV_SANITIZE is for GCC and Clang; configure without it.")
  endif()
  list(JOIN QSV_SANITIZE "," qsv_sanitizers)
  set(QSV_SANITIZE_OPTIONS -fsanitize=${qsv_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  unset(qsv_sanitizers)
endif()
