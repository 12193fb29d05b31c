# What makes a fault in a program harder to use, in all builds that aren't for finding faults. The test Hardening.Programs
# looks for it in the built programs.
include(CheckCXXCompilerFlag)

if(TOLVO_SANITIZERS OR CMAKE_BUILD_TYPE STREQUAL "Debug")
  set(TOLVO_HARDENING OFF)
else()
  set(TOLVO_HARDENING ON)
endif()

if(TOLVO_HARDENING)
  # Distributions may set a level of their own, and a second definition is a warning.
  target_compile_options(tolvo_options INTERFACE
    -fPIE -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
  check_cxx_compiler_flag(-fcf-protection=full TOLVO_HAS_CF_PROTECTION)
  if(TOLVO_HAS_CF_PROTECTION)
    target_compile_options(tolvo_options INTERFACE -fcf-protection=full)
  endif()
  add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
