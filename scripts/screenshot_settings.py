"""The INI files of the screenshots."""

QUIET = {"RefreshInterval": 500, "LogIPAddress": 1, "TransferResetLast": "16.11.2026"}
LIMITED = {**QUIET, "TransferLimit": 1, "TransferLimitValue": 5000, "TransferLimitWarning": 1,
           "TransferResetEnable": 1, "TransferReset": 8, "TransferResetBackup": 1,
           "TransferTicker": 1, "TransferTickerValue": 1}
WARNED = {**LIMITED, "TransferTicker": 0, "TransferResetEnable": 0}  # no note over the warning
PLANNED = """[Plan 1]\r
Name="Home"\r
Allowance=10 GB\r
Period=Month\r
Day=14\r
Threshold1=50 note\r
Threshold2=80 note window\r
Threshold3=100 note hangup\r
"""
TICKING = {**QUIET, "TransferTicker": 1, "TransferTickerValue": 1}


def records():
    """45 days of use, one session each; the totals are reset at the end of January."""
    dice, sent, rcvd, duration = 7, 0, 0, 0
    for day in range(45):
        def throw(least, most):
            nonlocal dice
            dice = dice * 48271 % 2147483647
            return least + dice % (most - least + 1)

        if day == 31:
            sent, rcvd, duration = 0, 0, 0
        sent += throw(200000, 5000000)
        rcvd += throw(5000000, 90000000)
        duration += 1000 * throw(600, 7200)
        month, date = (1, day + 1) if day < 31 else (2, day - 30)
        stamp = "%02d.%02d.2024|%02d:%02d:%02d" % (
            date, month, 20 + throw(0, 1), throw(0, 59), throw(0, 59))
        yield stamp, sent, rcvd, duration, "10.0.0.%d" % throw(1, 30)


def ini_of(settings):
    lines = ["[Settings]"] + ["%s=%s" % item for item in settings.items()]
    all_records = list(records())
    lines.append("LastDateStamp=%d" % len(all_records))
    lines.append("LastState=" + all_records[-1][0])
    sections = []
    for number, (stamp, sent, rcvd, duration, address) in enumerate(all_records, 1):
        lines.append("DateStamp%d=%s" % (number, stamp))
        sections += ["[%s]" % stamp, "Sent=%d" % sent, "Rcvd=%d" % rcvd,
                     "Duration=%d" % duration, "IPAddress=" + address]
    return "\r\n".join(lines + sections) + "\r\n"
