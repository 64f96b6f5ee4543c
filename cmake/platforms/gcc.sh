# GCC: the whole build with all its tests, and the same answers whatever it optimises.
options=(-DCMAKE_CXX_COMPILER=g++)
finish() {
    fuzz/same_bytes.sh g++
    cp build/same-bytes/*.answers "$folder"
}
