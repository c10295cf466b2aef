# kiv_type_library(NAME IDL): compiles an IDL file with widl into NAME.h, NAME_i.c (identifiers) and NAME.tlb below the
# current binary folder, and makes an object library NAME that carries the header's folder and the identifiers. The files
# are the same whenever and wherever they are made.
function(kiv_type_library name idl)
    get_filename_component(source ${idl} ABSOLUTE)
    get_filename_component(base ${idl} NAME_WE)
    get_filename_component(folder ${source} DIRECTORY)
    set(out ${CMAKE_CURRENT_BINARY_DIR}/generated)
    file(MAKE_DIRECTORY ${out})
    find_program(KIV_WIDL NAMES ${KIV_MINGW_TRIPLET}-widl x86_64-w64-mingw32-widl REQUIRED)
    set(architecture --win64)
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)
        set(architecture --win32)
    endif()
    add_custom_command(
        OUTPUT ${out}/${base}.h ${out}/${base}_i.c ${out}/${base}.tlb
        COMMAND ${KIV_WIDL} ${architecture} -I${PROJECT_SOURCE_DIR}/src/resources/idl -L/usr/lib/x86_64-linux-gnu/wine/x86_64-windows
            -h -H ${out}/${base}.h -u -U ${out}/${base}_i.c -t -T ${out}/${base}.tlb ${idl}
        COMMAND perl ${PROJECT_SOURCE_DIR}/cmake/still-type-library.pl ${out}/${base}.tlb
        # widl writes the name of its source, as it is given, into the header.
        WORKING_DIRECTORY ${folder}
        DEPENDS ${source} ${PROJECT_SOURCE_DIR}/src/resources/idl/oaidl.idl ${PROJECT_SOURCE_DIR}/cmake/still-type-library.pl
        COMMENT "Type library ${base}.tlb"
        VERBATIM)
    add_custom_target(${name}_files DEPENDS ${out}/${base}.h ${out}/${base}_i.c ${out}/${base}.tlb)
    add_library(${name} STATIC ${out}/${base}_i.c)
    add_dependencies(${name} ${name}_files)
    # Generated code is not held to the project's warnings.
    target_include_directories(${name} SYSTEM PUBLIC ${out})
    set_property(TARGET ${name} PROPERTY KIV_TLB ${out}/${base}.tlb)
endfunction()
