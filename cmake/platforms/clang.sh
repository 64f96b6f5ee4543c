# Clang: the whole build with all its tests, and the same answers whatever it optimises.
options=(-DCMAKE_CXX_COMPILER=clang++)
finish() {
    fuzz/same_bytes.sh clang++
    cp build/same-bytes/*.answers "$folder"
}
