# Compiler options of every target of the project: link to kiv_options.
add_library(kiv_options INTERFACE)
target_compile_features(kiv_options INTERFACE cxx_std_20)
target_include_directories(kiv_options INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/src)
target_compile_options(kiv_options INTERFACE
    -Werror -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Woverloaded-virtual)

option(KIV_SANITIZE "Build with address and undefined-behaviour sanitizers" OFF)
if(KIV_SANITIZE)
    target_compile_options(kiv_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kiv_options INTERFACE -fsanitize=address,undefined)
    if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
        # The fuzz targets follow what they reach in here.
        target_compile_options(kiv_options INTERFACE -fsanitize=fuzzer-no-link)
    endif()
endif()

if(WIN32)
    # Windows 7 is the oldest system whose headers are used; newer calls are looked up at run time.
    target_compile_definitions(kiv_options INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN STRICT
        WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0600)
    target_compile_options(kiv_options INTERFACE -ffunction-sections -fdata-sections)
    # -static: the product must not need the tool chain's own DLLs. No time stamps: the same source, the same bytes.
    target_link_options(kiv_options INTERFACE
        -static -Wl,--gc-sections -Wl,--no-insert-timestamp -Wl,--dynamicbase -Wl,--nxcompat -s
        # The compiler takes part in linking wherever it finds something that it could go on with, unless it is told not to.
        $<$<NOT:$<BOOL:$<TARGET_PROPERTY:KIV_LINKED_SMALL>>>:-fno-lto>)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        target_link_options(kiv_options INTERFACE -Wl,--high-entropy-va)
    else()
        # Lengths round the same way in 32 and 64 bits; every processor that Windows 8 and later run on has SSE2.
        target_compile_options(kiv_options INTERFACE -msse2 -mfpmath=sse)
    endif()
endif()

# kiv_build_small(TARGET [FILE...]): for what ends up in the component. It is loaded into other people's programs, beside
# hundreds of other things, and waits for the system and for the user most of its time: there the smallest code is the
# best. The files named are those in which the time is really spent.
function(kiv_build_small target)
    if(NOT WIN32)
        return()
    endif()
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-Os>
        # Nothing asks for a type at run time (exceptions bring their own); the descriptions would be 20 KB.
        $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>
        # For kiv_link_small; for everything else the code is there as well.
        $<$<COMPILE_LANGUAGE:CXX>:-flto> $<$<COMPILE_LANGUAGE:CXX>:-ffat-lto-objects>)
    set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS $<$<CONFIG:Release>:-O2>)
endfunction()

# kiv_link_small(TARGET): optimises while linking. In one partition: GCC 12 ends with an internal error in several.
function(kiv_link_small target)
    set_property(TARGET ${target} PROPERTY KIV_LINKED_SMALL ON)
    target_link_options(${target} PRIVATE -flto -flto-partition=one)
endfunction()
