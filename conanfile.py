"""Conan 2 recipe: the same CMake build as everywhere, with the library alone unless the tool is wanted."""

import re
from pathlib import Path

from conan import ConanFile
from conan.tools.cmake import CMake, CMakeDeps, CMakeToolchain, cmake_layout


class Qsv3dprocess(ConanFile):
    name = "qsv_3dprocess"
    description = "Triangulated terrain from survey points and breaklines"
    package_type = "library"
    settings = "os", "compiler", "build_type", "arch"
    options = {"shared": [True, False], "tool": [True, False]}
    default_options = {"shared": True, "tool": False}
    exports = "CMakeLists.txt"
    exports_sources = (
        "CMakeLists.txt", "*.h", "base/*", "cmake/*", "grid3dsphere/*", "host/*", "platform/*", "projection/*", "tin/*",
    )

    def set_version(self):
        """The version stands in CMakeLists.txt and nowhere else."""
        text = (Path(self.recipe_folder) / "CMakeLists.txt").read_text()
        self.version = re.search(r"project\(qsv_3dprocess VERSION ([0-9.]+)", text).group(1)

    def requirements(self):
        if self.options.tool:
            for requirement in ("cairo/[>=1.16]", "cli11/[>=2.1]", "fast_float/[>=3.9]", "nlohmann_json/[>=3.11]"):
                self.requires(requirement)

    def layout(self):
        cmake_layout(self)

    def generate(self):
        CMakeDeps(self).generate()
        toolchain = CMakeToolchain(self)
        for part in ("TESTS", "EXAMPLES", "BENCHMARKS"):
            toolchain.variables["QSV_BUILD_" + part] = False
        toolchain.variables["QSV_BUILD_HOST"] = bool(self.options.tool)
        toolchain.generate()

    def build(self):
        cmake = CMake(self)
        cmake.configure()
        cmake.build()

    def package(self):
        CMake(self).install()

    def package_info(self):
        # What the build installs is what consumers find: its own CMake package.
        self.cpp_info.set_property("cmake_find_mode", "none")
        self.cpp_info.builddirs = ["lib/cmake/qsv_3dprocess"]
        self.cpp_info.set_property("pkg_config_name", "qsv_3dprocess")
        self.cpp_info.includedirs = ["include/qsv_3dprocess"]
        self.cpp_info.libs = ["QSV_3DPROCESS"]
        if not self.options.shared:
            self.cpp_info.defines = ["QSV_STATIC"]
