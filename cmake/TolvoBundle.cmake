# What the build writes down about itself. Whoever releases sets these; what stays empty is absent in the program.
set(TOLVO_BUILD_NUMBER 1 CACHE STRING "Number of this build; grows with every release")
set(TOLVO_RELEASE_DATE "" CACHE STRING "Date of the release, such as 2026-01-31")
set(TOLVO_WEB_HOST "tolvo.example" CACHE STRING "Host that answers /v1/update and has the downloads below /releases")
set(TOLVO_UPDATE_API_URL "" CACHE STRING "URL of the update check, if it isn't at that host")
set(TOLVO_UPDATE_DOWNLOAD_BASE_URL "" CACHE STRING "URL below which the downloads are, if it isn't at that host")
set(TOLVO_BUILD_ID "" CACHE STRING "What tells this build from others; the git revision if it is empty")

# tolvo_git(RESULT ARGUMENTS...): what git says of the source tree, or nothing.
function(tolvo_git result)
  execute_process(COMMAND git -C ${PROJECT_SOURCE_DIR} ${ARGN}
    OUTPUT_VARIABLE output OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  set(${result} "${output}" PARENT_SCOPE)
endfunction()

set(TOLVO_BUNDLE_BUILD_ID "${TOLVO_BUILD_ID}")
if(NOT TOLVO_BUNDLE_BUILD_ID)
  # A tree that lies unpacked inside of another project's repository has no revision of its own.
  tolvo_git(folderInRepository rev-parse --show-prefix)
  tolvo_git(revision rev-parse --short=12 HEAD)
  if(NOT folderInRepository)
    set(TOLVO_BUNDLE_BUILD_ID "${revision}")
  endif()
  # Each commit and checkout writes there.
  tolvo_git(headLog rev-parse --path-format=absolute --git-path logs/HEAD)
  if(headLog AND EXISTS "${headLog}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${headLog}")
  endif()
endif()
