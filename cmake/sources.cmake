# Everything the library is made of, one file a line, in the order of its layers.
set(QSV_SOURCES
  platform/afx_file.cpp
  platform/afx_string.cpp
  base/polyline.cpp
  base/rotation.cpp
  base/sort_key.cpp
  base/xyz.cpp
)

# The public surface: these headers are installed, and nothing else is.
set(QSV_PUBLIC_HEADERS
  platform/afx_array.h
  platform/afx_file.h
  platform/afx_point.h
  platform/afx_string.h
  platform/export.h
  base/polyline.h
  base/rotation.h
  base/sort_key.h
  base/xyz.h
  tin/breakline.h
  tin/triangle.h
)
