# SPDX-License-Identifier: GPL-3.0-or-later
# What makes a fault in the program's memory harder to use, for all that is built from here on: code at random addresses,
# tables of the linker that nobody writes to after the start, guards on the stack, calls of the C library that know how
# large their target is. tests/werkzeuge/haertung.sh looks at what comes out. What the flags of the build give already,
# as those of a Debian package do, is not given twice.
include(CheckCXXCompilerFlag)

foreach(schalter -fstack-protector-strong -Wformat -Werror=format-security)
  string(FIND "${CMAKE_CXX_FLAGS}" ${schalter} stelle)
  if(stelle EQUAL -1)
    add_compile_options(${schalter})
  endif()
endforeach()

# Needs an optimiser. Some compilers bring a level of their own.
string(TOUPPER "CMAKE_CXX_FLAGS_${CMAKE_BUILD_TYPE}" flags_der_art)
if("${CMAKE_CXX_FLAGS} ${${flags_der_art}}" MATCHES "-O[1-9s]" AND NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
  add_compile_options("SHELL:-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2")
endif()

# Not every processor has these.
foreach(schalter -fstack-clash-protection -fcf-protection)
  string(MAKE_C_IDENTIFIER "GPK_KENNT${schalter}" bekannt)
  check_cxx_compiler_flag(${schalter} ${bekannt})
  if(${bekannt})
    add_compile_options(${schalter})
  endif()
endforeach()

# Where Qt asks for -fPIC, that comes later and holds.
add_compile_options(-fPIE)
add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie>)

foreach(schalter -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  string(FIND "${CMAKE_EXE_LINKER_FLAGS}" ${schalter} stelle)
  if(stelle EQUAL -1)
    add_link_options(${schalter})
  endif()
endforeach()
