"""Records of runs, as a sequence files them."""

HOSTILE = '"><img src=x onerror="harmed=1"><script>harmed=1</script>\'\u202e\x1b\x00'


def call(request, answer, failed=False, start=0.1, **more):
    return {"request": request, "answer": answer, "sent": "", "sent_size": 0, "received": "",
            "received_size": 0, "failed": failed, "start_ms": start, "time_ms": 0.2, **more}


def attempt(start, result=0, **more):
    names = {0: "RESULT_SUCCESS", -5: "RESULT_CAMERA_ERROR"}
    return {"result": result, "result_name": names[result], "error": "", "start_ms": start,
            "time_ms": 1.5, "before": {}, "after": {}, "calls": [], "log": [], "interleaved": [],
            **more}


def measurement(name, value, low, high, **more):
    within = (low is None or value >= low) and (high is None or value <= high)
    return {"name": name, "field": "F", "unit": "mm", "text": str(value), "value": value,
            "min": low, "max": high, "pattern": "", "judged": True, "within": within, **more}


def step(number, name, operation, outcome="passed", start=0.0, **more):
    return {"number": number, "name": name, "operation": operation, "outcome": outcome,
            "problem": "", "expected_result": "", "expected_fields": {}, "start_ms": start,
            "time_ms": 2.0, "measurements": [], "attempts": [attempt(start)], **more}


def record(index, steps, outcome="passed", **more):
    return {"format": 2, "record": f"c0ffee00-0000-4000-8000-{index:012}", "jighost": "1.1.0",
            "started": f"2026-11-{10 + index % 20}T09:20:00.123+01:00",
            "started_at": 1_763_000_000_000 + index * 86_400_000, "time_ms": 20.0 + index,
            "station": "line 4", "operator": "kb", "sequence": {"name": "inspection", "files": [
                {"path": "inspection.yaml", "version": "", "sha256": "ab" * 32}]},
            "body": {"serial": 12300 + index, "id": {"SerialNo": 12300 + index}, "problem": ""},
            "parameters": {"owner": "Line 4"}, "range": {"first": 1, "last": 6, "of": 6},
            "libraries": {"module": {"path": "TuneBench.t460", "version": "1.1.0",
                                     "sha256": "cd" * 32},
                          "link": {"path": "BODYLNK", "version": "", "sha256": "ef" * 32}},
            "faults": [], "outcome": outcome, "problem": "", "steps": steps, **more}


def failed_run():
    """Fails in its third and fifth step, full of hostile text."""
    before = {"OwnerName": "Desk", "Levels": [1, 2]}
    failing = step(
        5, "lens " + HOSTILE, "SetOwnerName", "error", 8.0, time_ms=10.0,
        problem="expected RESULT_SUCCESS (0), got RESULT_CAMERA_ERROR (-5): " + HOSTILE,
        expected_fields={"OwnerName": "Line 4"}, attempts=[
            attempt(8.0, -5, error="Link failure", calls=[call("Set 0x7 2: 30 41", "failed", True)]),
            attempt(12.0, -5, error="Link failure", time_ms=6.0, before=before,
                    after={"OwnerName": HOSTILE, "Levels": [1, 2]},
                    calls=[call("Get 0x1000006 8", "b5 0d 00 00 f9 5d a9 be", received="b5 0d 00 00",
                                received_size=4),
                           call("Set 0x1000007 4: 30 41 42 30", "done", start=2.0, sent=HOSTILE,
                                sent_size=4),
                           call("Save 0x1000007", "failed: [EVNT] Link failure (0x2001)", True, 5.0)],
                    log=["2026/11/23 09:20:00.131 [FUNC] SetOwnerName",
                         "[ERR!] [EVNT] Link failure " + HOSTILE, "[FUNC] SetOwnerName - -5"])])
    steps = [
        step(1, "EnterFactoryMode", "EnterFactoryMode"),
        step(2, "tilt", "GetDigitalParaAdjData", start=2.0, measurements=[
            measurement("tilt x", 0.4, -1, 1), measurement("tilt y", -0.9, -1, 1),
            measurement("focus", 7.25, 5, None)], attempts=[
                attempt(2.0, calls=[call("Get 0x1000006 8", "b5 0d")], log=["seen in the log"])]),
        step(3, "shift", "GetDigitalParaAdjData", "failed", 4.0, problem="shift " + HOSTILE,
             measurements=[measurement("shift", 5.5, -4, 4, unit=HOSTILE)]),
        step(4, "owner", "GetOwnerName", start=6.0, measurements=[
            {**measurement("owner", 0, None, None), "text": "Line 4", "value": None,
             "pattern": "Line [0-9]+", "unit": ""}]),
        failing, step(6, "LeaveFactoryMode", "LeaveFactoryMode", start=18.0)]
    return record(0, steps, "failed", faults=["SetOwnerName:3=0x2001"], station=HOSTILE)


def lot(count):
    """Runs whose tilt drifts out of its limits, every seventh by far, one of hostile names."""
    for index in range(1, count + 1):
        tilt = index % 5 / 5 - 0.4 + (1.5 if index % 7 == 0 else 0)
        judged = [measurement("tilt", tilt, -1, 1), measurement("gain", 10 + index % 3, 9, 13)]
        failed = not judged[0]["within"]
        outcome = "failed" if failed else "passed"
        problem = f"tilt: expected from -1 to 1, got {tilt}" if failed else ""
        yield record(index, [step(1, "tilt", "GetDigitalParaAdjData", outcome, problem=problem,
                                  measurements=judged)], outcome,
                     operator=HOSTILE if index == 3 else "kb")
