# The platform's host library libvmkmgmt.so, which exists on ESXi hosts only.

# tavik_link_host_library(<target>): keeps the host library among the needed libraries of <target>
# though it calls nothing of it. It is linked by name, so that the host's loader finds its own.
function(tavik_link_host_library target)
    if(TAVIK_VMKMGMT_DIR)
        target_link_directories(${target} PRIVATE "${TAVIK_VMKMGMT_DIR}")
    endif()
    target_link_options(${target} PRIVATE
        "LINKER:--push-state,--no-as-needed" -lvmkmgmt "LINKER:--pop-state")
    set_target_properties(${target} PROPERTIES SKIP_BUILD_RPATH ON)
endfunction()
