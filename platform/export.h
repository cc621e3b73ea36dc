#ifndef QSV_PLATFORM_EXPORT_H
#define QSV_PLATFORM_EXPORT_H

// QSV_API marks what the dynamic library exports; everything else stays hidden.
//   QSV_STATIC    the library is linked statically: nothing is imported or exported
//   QSV_BUILDING  set only while the library itself is compiled
#if defined(QSV_STATIC)
#define QSV_API
#elif defined(_WIN32)
#if defined(QSV_BUILDING)
#define QSV_API __declspec(dllexport)
#else
#define QSV_API __declspec(dllimport)
#endif
#else
#define QSV_API __attribute__((visibility("default")))
#endif

#endif
