# Runs while the package is installed, with
#   document     the bill of materials of Sbom.cmake
#   destination  the folder, below DESTDIR, where it is installed

file(READ ${document} sbom)
string(TIMESTAMP created UTC)
# Documents with different contents have different names.
string(UUID uuid NAMESPACE 6ba7b811-9dad-11d1-80b4-00c04fd430c8 TYPE SHA1 NAME "${created} ${sbom}")
string(JSON sbom SET "${sbom}" creationInfo created "\"${created}\"")
string(JSON sbom SET "${sbom}" documentNamespace "\"urn:uuid:${uuid}\"")
file(WRITE $ENV{DESTDIR}${destination}/ZOL_Framework.spdx.json "${sbom}\n")
