# Warnings are errors in our own code; the target carries them so that library headers stay out of it.
add_library(velmorand_options INTERFACE)
target_compile_options(velmorand_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wimplicit-fallthrough -Wswitch-enum -Werror)

# g++ 12 reports overlapping copies inside std::string's own operators when it optimises (GCC bug 105329).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(velmorand_options INTERFACE -Wno-restrict)
endif()

if(VELMORAND_SANITIZE)
    # g++ 12 takes moved variants for uninitialised when it instruments them.
    target_compile_options(velmorand_options INTERFACE -Wno-maybe-uninitialized)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

if(VELMORAND_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
