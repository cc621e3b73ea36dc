# QSV_STRICT_MATH: every target that computes uses these, so that the same input gives the same bits
# whatever the compiler and its default flags. A fused a*b - c*d rounds one product only, and then the cross
# product of equal vectors is no longer 0.
include(CheckCXXSymbolExists)

if(MSVC)
  set(QSV_STRICT_MATH /fp:strict)
else()
  # In this order: -fno-fast-math puts contraction back to the compiler's default.
  set(QSV_STRICT_MATH -fno-fast-math -ffp-contract=off)
  check_cxx_symbol_exists(__i386__ "cstddef" QSV_TARGET_IS_X86_32)
  if(QSV_TARGET_IS_X86_32)
    list(APPEND QSV_STRICT_MATH -msse2 -mfpmath=sse)  # x87 registers would keep 64 bits of mantissa
  endif()
endif()
