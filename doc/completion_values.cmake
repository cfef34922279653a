# Fills @VALUE_OPTIONS@ and @DIRECTORY_OPTIONS@ in the completion with the legacy options
# that take a value, and those whose value is a directory, as the filled manual page names
# them in its option entries (".TP" and then "\fB\-l\fR \fIdir\fR, \fB\-\-local\fR=\fIdir\fR"),
# so that the completion keeps no list of its own.
#
#   cmake -DMANUAL=tovak.1 -DTEMPLATE=tovak.bash.in -DOUTPUT=tovak.bash -P completion_values.cmake
file(READ "${MANUAL}" manual)
string(REPLACE "\\-" "-" manual "${manual}")
string(REGEX MATCHALL "\\.TP\n[^\n]*" entries "${manual}")
set(tag "\\\\fB(-[-a-z]+)\\\\fR[ =]\\\\fI([a-z]+)\\\\fR")
set(values "")
set(directories "")
foreach(entry IN LISTS entries)
  string(REGEX MATCHALL "${tag}" forms "${entry}")
  foreach(form IN LISTS forms)
    string(REGEX REPLACE "${tag}" "\\1" name "${form}")
    string(REGEX REPLACE "${tag}" "\\2" value "${form}")
    list(APPEND values "${name}")
    if(value STREQUAL "dir")
      list(APPEND directories "${name}")
    endif()
  endforeach()
endforeach()
list(REMOVE_DUPLICATES values)
list(REMOVE_DUPLICATES directories)
if(NOT directories)
  message(FATAL_ERROR "${MANUAL} names no option whose value is a directory")
endif()
list(JOIN values " " values)
list(JOIN directories " " directories)
file(READ "${TEMPLATE}" completion)
string(REPLACE "@VALUE_OPTIONS@" "${values}" completion "${completion}")
string(REPLACE "@DIRECTORY_OPTIONS@" "${directories}" completion "${completion}")
file(WRITE "${OUTPUT}" "${completion}")
