# Warnings are errors in our own code; the target carries them so that library headers stay out of it.
add_library(velmorand_options INTERFACE)
target_compile_options(velmorand_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wimplicit-fallthrough -Wswitch-enum -Werror)

# When it optimises, g++ 12 reports overlapping copies inside std::string's own operators (GCC bug 105329) and takes moved
# variants for uninitialised.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(velmorand_options INTERFACE -Wno-restrict -Wno-maybe-uninitialized)
endif()

# clang sees that the standard library of g++ 12 uses in std::stable_sort what it declares deprecated itself.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    target_compile_options(velmorand_options INTERFACE -Wno-deprecated-declarations)
endif()

if(VELMORAND_SANITIZE)
    # Later versions do so when they instrument them.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(velmorand_options INTERFACE -Wno-maybe-uninitialized)
    endif()
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

# The code under test tells the fuzzer which ways were taken; the fuzzer itself is linked into its targets alone.
if(VELMORAND_FUZZ)
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

if(VELMORAND_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
