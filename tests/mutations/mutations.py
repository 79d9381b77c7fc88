#!/usr/bin/env python3
"""Changes the library in one place at a time and sees whether the tests notice.

Usage: mutations.py TREE BUILD [NAME...]: TREE is a copy of the sources that may be changed, BUILD its configured
build folder. Exit code 1 if a change survives.
"""
import os
import pathlib
import subprocess
import sys

# Name, file, the text that stands there once, what it becomes, and the test program that must fail.
MUTATIONS = [
    # Limits.
    ("the pause after a call is shorter", "service/ZorHandleGate.cpp", "kPauseMs = 2000", "kPauseMs = 1999",
     "test_gate"),
    ("the first port is another", "service/PortSearch.cpp", "kFirstPort = 9090", "kFirstPort = 9091",
     "test_port_search"),
    ("the last port is the last but one", "service/PortSearch.cpp", "kLastPort = 65534", "kLastPort = 65533",
     "test_port_search"),
    ("a fourth client is served", "service/ToolServer.cpp", "kClientLimit = 3", "kClientLimit = 4",
     "test_server_thread"),
    ("exactly 85 percent is short of space", "recscan/SpaceCases.cpp", "usedRatio(partition) > kRatioLimit",
     "usedRatio(partition) >= kRatioLimit", "test_scan_limits"),
    ("5 GiB free is short of space", "recscan/SpaceCases.cpp", "freeBytes(partition) < kFreeLimit",
     "freeBytes(partition) <= kFreeLimit", "test_scan_limits"),
    ("32 GiB of FAT32 is large", "recscan/VolumeCases.cpp", "static_cast<quint64>(partition.rawCapacity) > kLargeFat32",
     "static_cast<quint64>(partition.rawCapacity) >= kLargeFat32", "test_scan_limits"),
    ("2 TiB wastes space", "recscan/DiskCases.cpp", "candidate.totalCapacity > kMbrLimit",
     "candidate.totalCapacity >= kMbrLimit", "test_scan_limits"),
    ("3 GiB of memory are enough", "win11/Win11Check.cpp", "kLeastMemoryGib = 4", "kLeastMemoryGib = 3",
     "test_readiness"),
    ("a volume of 63 GiB is enough", "win11/Win11Check.cpp", ">> 30 >= kLeastVolumeGib", ">> 30 >= kLeastVolumeGib - 1",
     "test_readiness"),
    ("a region that fits exactly is passed over", "tools/Inventory.cpp", "record.rawCapacity >= size",
     "record.rawCapacity > size", "test_inventory"),
    # Orders.
    ("the guide is closed after the order", "tools/Dispatch.cpp",
     "    closeGuide();\n    page.order(ConnectionRule::Call, functionIndex, params);",
     "    page.order(ConnectionRule::Call, functionIndex, params);\n    closeGuide();", "test_dispatch"),
    ("the chat port is published in the place of the other", "service/AIFuncallThread.cpp",
     'qputenv("AGENT_NATIVE_PORT", QString::number(nativePort)',
     'qputenv("AGENT_NATIVE_PORT", QString::number(chatPort)', "test_service_config"),
    ("the later of two lists stays", "tools/Inventory.cpp", "byDisk.emplace(diskIndex, std::move(records));",
     "byDisk[diskIndex] = std::move(records);", "test_inventory"),
    ("firmware is checked before the processor", "win11/Win11Check.cpp",
     "{&Win11Check::checkProcessor, &Win11Check::checkFirmware,",
     "{&Win11Check::checkFirmware, &Win11Check::checkProcessor,", "test_readiness"),
    ("a busy host is asked before an open dialog", "service/ZorHandleGate.cpp",
     "answer.__set_reasons(kInProgress);", "answer.__set_reasons(kInExecution);", "test_gate"),
    ("the next case is remembered one too early", "recscan/RecScanThread.cpp", "now.state.nextCaseIndex = index + 1",
     "now.state.nextCaseIndex = index", "test_scan_state"),
    # Texts.
    ("a refusal loses its stop", "service/ZorHandleGate.cpp", "please let me know!\";\nconst char* const kInExecution",
     "please let me know\";\nconst char* const kInExecution", "test_gate"),
    ("a trailing blank is trimmed", "recscan/VolumeCases.cpp", "cross-platform accessibility! \")",
     "cross-platform accessibility!\")", "test_scan_cases"),
    ("megabytes are spelled otherwise", "tools/SizeText.cpp", '+ " MB"', '+ " MiB"', "test_inventory"),
    ("a BitLocker state is spelled otherwise", "tools/InventoryRecords.cpp", '"encryption unlocked"',
     '"encryption-unlocked"', "test_inventory"),
    # Key names and what stands under them.
    ("the key of the question is another", "tools/Dispatch.cpp", '"TestFunValid"', '"testFunValid"', "test_dispatch"),
    ("the new size goes under another key", "tools/PartitionTools.cpp",
     'setParam(QStringLiteral("size"), bytes(newPartitionCapacity));',
     'setParam(QStringLiteral("capacity"), bytes(newPartitionCapacity));', "test_tool_table"),
    ("both merged letters are normalised", "tools/PartitionTools.cpp",
     "    setParam(kDriveLetter, driveLetter1);", "    setParam(kDriveLetter, QVariant(normalisedLetter(driveLetter1)));",
     "test_tool_table"),
    ("no letter stands for a new partition", "tools/PartitionTools.cpp", 'QStringLiteral("dummy")',
     "QString()", "test_tool_table"),
    ("a clone's record goes under another key", "tools/CloneTask.cpp", 'result[QStringLiteral("errMsg")]',
     'result[QStringLiteral("errorMsg")]', "test_guided_tools"),
    ("the state's bytes change places", "recscan/ScanStateFile.cpp",
     "stream << state.nextCaseIndex << state.referralDone;", "stream << state.referralDone << state.nextCaseIndex;",
     "test_scan_state"),
    ("a disk without a SSD flag is one", "tools/InventoryRecords.cpp", 'FLAG("isSSD", isSsd)', 'FLAG("isSsd", isSsd)',
     "test_inventory"),
    # The component and its manager.
    ("the script engine owns the component", "plugin/ComponentBase.cpp", "QQmlEngine::CppOwnership",
     "QQmlEngine::JavaScriptOwnership", "test_plugin_object"),
    ("another pointer is stored for a null engine", "plugin/ComponentBase.cpp",
     "    if (engine == nullptr)\n        return;\n    engine->rootContext()",
     "    if (engine == nullptr)\n        engine_.store(reinterpret_cast<QQmlApplicationEngine*>(this));\n"
     "    if (engine == nullptr)\n        return;\n    engine->rootContext()", "test_plugin_object"),
    ("the first check-point follows the load", "plugin/ComponentMgr.cpp",
     "    step(__LINE__);\n    // The library stays loaded when its QLibrary is destroyed.\n"
     "    const ComponentFactory factory = library.load() ? componentFactory(library) : nullptr;\n",
     "    // The library stays loaded when its QLibrary is destroyed.\n"
     "    const ComponentFactory factory = library.load() ? componentFactory(library) : nullptr;\n    step(__LINE__);\n",
     "test_component_mgr"),
    ("init is outside its check-points", "plugin/ComponentMgr.cpp",
     "    component->init();\n    step(__LINE__);\n", "    step(__LINE__);\n    component->init();\n", "test_component_mgr"),
    ("a check-point after the announcement is missing", "plugin/ComponentMgr.cpp",
     "    Q_EMIT sigNewComponent(name, parentCom);\n    step(__LINE__);\n",
     "    Q_EMIT sigNewComponent(name, parentCom);\n", "test_component_mgr"),
    ("the language is connected after the announcement", "plugin/ComponentMgr.cpp",
     "    connectLanguage(contextObject(engine, QStringLiteral(\"multilanguage\")), component);\n"
     "    step(__LINE__);\n    Q_EMIT sigNewComponent(name, parentCom);\n",
     "    step(__LINE__);\n    Q_EMIT sigNewComponent(name, parentCom);\n"
     "    connectLanguage(contextObject(engine, QStringLiteral(\"multilanguage\")), component);\n", "test_component_mgr"),
    ("an invokable of the manager changes place", "plugin/ComponentMgr.h",
     "    Q_INVOKABLE QObject* component(QString name);\n",
     "    Q_INVOKABLE void reload() {}\n    Q_INVOKABLE QObject* component(QString name);\n", "test_component_mgr"),
    ("the clock does not wrap at midnight", "plugin/TestTime.cpp", "elapsed < 0 ?", "elapsed < -dayMs ?",
     "test_test_time"),
    ("an unsigned parameter is not called", "plugin/HostSignature.cpp", "    case QMetaType::UInt:\n",
     "", "test_host_signature"),
    ("the scan ends before the service", "plugin/AIBridge.cpp",
     "    if (serverThread != nullptr) {\n        serverThread->stopServer();",
     "    if (recScanThread != nullptr) {\n        recScanThread->requestStop();\n"
     "        recScanThread->wait(QDeadlineTimer(QDeadlineTimer::Forever));\n    }\n"
     "    if (serverThread != nullptr) {\n        serverThread->stopServer();", "test_release"),
    ("init after Release does nothing", "plugin/AIBridge.cpp", "    if (isServerRunning())\n        return;",
     "    if (serverThread != nullptr)\n        return;", "test_service_rounds"),
    # Widths, letters and selectors.
    ("sizes are read as 32-bit numbers", "tools/InventoryRecords.cpp", "r.field = v.toLongLong();", "r.field = v.toInt();",
     "test_inventory"),
    ("the sector size of an offset is signed", "tools/InventoryRecords.cpp", "r.sectorSize = v.toULongLong();",
     "r.sectorSize = static_cast<quint64>(v.toInt());", "test_inventory"),
    ("the letter a stays small", "tools/Inventory.cpp", "letter >= 'a' && letter <= 'z'", "letter > 'a' && letter <= 'z'",
     "test_inventory"),
    ("the letter z stays small", "tools/Inventory.cpp", "letter >= 'a' && letter <= 'z'", "letter >= 'a' && letter < 'z'",
     "test_inventory"),
    ("an empty target letter is replaced", "tools/PartitionTools.cpp",
     "setParam(kTargetDriveLetter, QVariant(normalisedLetter(targetDriveLetter)));",
     "setParam(kTargetDriveLetter, QVariant(targetDriveLetter.empty() ? QStringLiteral(\"CreateNew\")\n"
     "                                                                   : normalisedLetter(targetDriveLetter)));",
     "test_page_tools"),
    ("the selector of a cloned disk is the general one", "tools/CloneTools.cpp",
     "withType(disk(bridge, destDiskIndex), CloneDisk), sourceDiskIndex);",
     "withType(disk(bridge, destDiskIndex), CloneDisk), SelectNone);", "test_guided_tools"),
    ("the system letter keeps its case", "tools/CloneTools.cpp", "rootPath.left(1).toUpper()", "rootPath.left(1)",
     "test_guided_tools"),
    ("an empty root has another letter", "tools/CloneTools.cpp", 'QStringLiteral("C")', 'QStringLiteral("D")',
     "test_guided_tools"),
    ("the message is logged with a null bridge", "service/ZorHandleGate.cpp",
     "    if (bridge == nullptr)\n        return;\n    const QString call = QString::fromStdString(toolCalls);\n"
     "    qDebug() << \"CZorHandle::PreProcessing\" << __LINE__ << \"toolCalls0:\" << call;",
     "    const QString call = QString::fromStdString(toolCalls);\n"
     "    qDebug() << \"CZorHandle::PreProcessing\" << __LINE__ << \"toolCalls0:\" << call;\n"
     "    if (bridge == nullptr)\n        return;", "test_gate"),
]


def run(command, folder=None, **variables):
    environment = dict(os.environ, **variables)
    return subprocess.run(command, cwd=folder, env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)


def passes(tree, build, program):
    """None if the program cannot be built."""
    if run(["cmake", "--build", str(build), "--target", program]).returncode != 0:
        return None
    folder = build / "tests" / program
    command = ["timeout", "300", str(folder / program), "--gtest_brief=1", "--gtest_fail_fast"]
    return run(command, folder / "scratch", QT_QPA_PLATFORM="offscreen", AIBRIDGE_BUILD_DIR=str(build),
               AIBRIDGE_SOURCE_DIR=str(tree)).returncode == 0


def judge(tree, build, mutation):
    _, file, old, new, program = mutation
    path = tree / file
    text = path.read_text()
    if text.count(old) != 1:
        return f"stands there {text.count(old)} times"
    path.write_text(text.replace(old, new))
    try:
        return {None: "does not build", True: "SURVIVED", False: "killed"}[passes(tree, build, program)]
    finally:
        path.write_text(text)


def main():
    tree, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    names = sys.argv[3:]
    # A program that fails by itself would notice everything.
    for program in sorted({mutation[4] for mutation in MUTATIONS}):
        if not passes(tree, build, program):
            sys.exit(f"{program} fails without any change")
    results = []
    for mutation in MUTATIONS:
        if names and mutation[0] not in names:
            continue
        results.append(judge(tree, build, mutation))
        print(f"{results[-1]:10} {mutation[0]} ({mutation[4]})", flush=True)
    killed = results.count("killed")
    print(f"{killed} of {len(results)} killed")
    return 0 if killed == len(results) else 1


sys.exit(main())
