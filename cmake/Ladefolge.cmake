# SPDX-License-Identifier: GPL-3.0-or-later
# The order in which the loader looks for the 20,000 symbols that the program and its 84 libraries ask for at the start:
# first where most of them are. With the C library in its usual place, behind twenty others, loading takes 4 % longer.
include(CheckLinkerFlag)
check_linker_flag(CXX "-l:libc.so.6" GPK_KENNT_LIBC_6)

function(gpk_ladefolge target)
  if(NOT GPK_KENNT_LIBC_6)
    return()
  endif()
  target_link_options(${target} PRIVATE
    "SHELL:-Wl,--push-state,--no-as-needed -l:libc.so.6 $<TARGET_FILE:Qt6::Core> $<TARGET_FILE:Qt6::Gui> -lstdc++ \
$<TARGET_FILE:SQLite::SQLite3> $<TARGET_FILE:Qt6::Widgets> -Wl,--pop-state")
endfunction()
