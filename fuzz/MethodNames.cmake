# Writes METHOD(<name>) for each method of the interface, in its order.
#   cmake -D DESCRIPTION=<the interface as JSON> -D OUTPUT=<file> -P MethodNames.cmake
file(READ ${DESCRIPTION} description)
string(JSON functions GET "${description}" services 0 functions)
string(JSON count LENGTH "${functions}")
math(EXPR last "${count} - 1")
set(text "")
foreach(i RANGE ${last})
    string(JSON name GET "${functions}" ${i} name)
    string(APPEND text "METHOD(${name})\n")
endforeach()
file(WRITE ${OUTPUT} "${text}")
