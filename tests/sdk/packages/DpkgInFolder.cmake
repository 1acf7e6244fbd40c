# dpkg(<argument>...): runs dpkg for the system in the folder <ROOT>, which has nothing that the packages
# depend on. As any user: fakeroot makes dpkg believe that it may change owners.
function(dpkg)
    set(ENV{PATH} "$ENV{PATH}:/usr/sbin:/sbin")
    run(fakeroot dpkg --root=${ROOT} --force-depends ${ARGN})
endfunction()
