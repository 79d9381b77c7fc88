# What the Windows toolchain is made of. The cache is keyed by this file and by the compiler's version, so a
# change here builds anew, into a folder of its own.

qt_version=5.15.8
thrift_version=0.17.0
qt_parts=(qtbase qtdeclarative qtquickcontrols2)

# The library and the host need no widgets, databases or GPU: Qt Quick then draws with its software renderer.
# wintab.h, the Direct3D shader compiler and the Vulkan headers do not come with this compiler.
qtbase_flags=(
    -opensource -confirm-license -release -shared
    -xplatform win32-g++ -device-option CROSS_COMPILE=x86_64-w64-mingw32-
    -no-pch -no-optimized-qmake -nomake examples -nomake tests
    -no-opengl -no-widgets -no-feature-sql -no-dbus -no-openssl -no-icu
    -no-direct2d -no-feature-vulkan -no-feature-tabletevent
    -no-feature-printer -no-feature-sessionmanager
    -qt-zlib -qt-pcre -qt-libpng -qt-libjpeg -qt-freetype -qt-harfbuzz -qt-doubleconversion
)
# Without debugging, designer, particles and the styles that nothing here asks for, this takes less time.
qtdeclarative_flags=(
    -- -no-feature-d3d12 -no-feature-qml-debug -no-feature-qml-profiler -no-feature-qml-preview
    -no-feature-quick-designer -no-feature-quick-particles
)
qtquickcontrols2_flags=(
    -- -no-feature-quickcontrols2-fusion -no-feature-quickcontrols2-imagine
    -no-feature-quickcontrols2-material -no-feature-quickcontrols2-universal
)

# Thrift's server and client for C++ alone.
thrift_flags=(
    -DBUILD_SHARED_LIBS=OFF -DBUILD_COMPILER=OFF -DBUILD_TESTING=OFF -DBUILD_TUTORIALS=OFF -DBUILD_CPP=ON
    -DBUILD_C_GLIB=OFF -DBUILD_JAVA=OFF -DBUILD_JAVASCRIPT=OFF -DBUILD_KOTLIN=OFF -DBUILD_NODEJS=OFF
    -DBUILD_PYTHON=OFF -DWITH_OPENSSL=OFF -DWITH_ZLIB=OFF -DWITH_LIBEVENT=OFF -DWITH_QT5=OFF
)

# Spellings by which Windows sources include headers that this compiler ships in small letters.
case_shims=(Windows.h Shlwapi.h WS2tcpip.h WinSock2.h Winsock2.h AccCtrl.h Aclapi.h Sddl.h ObjBase.h)
