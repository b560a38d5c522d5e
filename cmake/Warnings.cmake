# parvenna_warnings(target): the house warnings for our own code.
function(parvenna_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
    -Wshadow)
  if(PARVENNA_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
