# Static libraries.
options=(-DCMAKE_CXX_COMPILER=g++ -DBUILD_SHARED_LIBS=OFF)
