# QSV_WARNINGS: the warnings of every target of this project. They are errors with QSV_WERROR only, so that a
# newer compiler's new warning never breaks somebody else's build.
if(MSVC)
  set(QSV_WARNINGS /W4 /permissive- /utf-8 $<$<BOOL:${QSV_WERROR}>:/WX>)
else()
  set(QSV_WARNINGS -Wall -Wextra -Wconversion -Wshadow $<$<BOOL:${QSV_WERROR}>:-Werror>)
endif()
