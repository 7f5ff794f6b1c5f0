#pragma once

#include "controls/Form.h"

namespace tarvik {

/// The statistics window: the line counters of the connection that is up, and how the machine is
/// connected to the Internet. Its panels are refreshed only while their box is ticked.
class FrmStatistics : public Form {
public:
    FrmStatistics();

    Frame frameActiveConnection{*this, "frameActiveConnection", {"Active connection statistics:"}};
    CheckBox chkActiveConnection{
        *this, "chkActiveConnection", {.caption = "Enable", .mnemonic = 'E'}};
    TextBox txtFrames{*this, "txtFrames", counter()};
    TextBox txtBitrate{*this, "txtBitrate", counter()};
    TextBox txtCRCError{*this, "txtCRCError", counter()};
    TextBox txtTimeoutError{*this, "txtTimeoutError", counter()};
    TextBox txtAlignmentError{*this, "txtAlignmentError", counter()};
    TextBox txtHWOverrunError{*this, "txtHWOverrunError", counter()};
    TextBox txtFramingError{*this, "txtFramingError", counter()};
    TextBox txtBufferOverrunError{*this, "txtBufferOverrunError", counter()};
    TextBox txtCompressionRatioIn{*this, "txtCompressionRatioIn", counter()};
    TextBox txtCompressionRatioOut{*this, "txtCompressionRatioOut", counter()};
    TextBox txtConnectDuration{*this, "txtConnectDuration", counter()};
    TextBox txtHostName{*this, "txtHostName", counter()};
    TextBox txtIPAddress{*this, "txtIPAddress", counter()};
    TextBox txtAverageThroughput{*this, "txtAverageThroughput", counter()};
    Label lblFrames{*this, "lblFrames", naming("Fames (rcvd/sent):", txtFrames)};
    Label lblBitrate{*this, "lblBitrate", naming("Bitrate (bps):", txtBitrate)};
    Label lblCRCError{*this, "lblCRCError", naming("CRC errors:", txtCRCError)};
    Label lblTimeoutError{*this, "lblTimeoutError", naming("Timeout errors:", txtTimeoutError)};
    Label lblAlignmentError{*this, "lblAlignmentError",
                            naming("Alignment errors:", txtAlignmentError)};
    Label lblHWOverrunError{*this, "lblHWOverrunError",
                            naming("HW overrun errors:", txtHWOverrunError)};
    Label lblFramingError{*this, "lblFramingError", naming("Framing errors:", txtFramingError)};
    Label lblBufferOverrunError{*this, "lblBufferOverrunError",
                                naming("Buffer overrun errors:", txtBufferOverrunError)};
    Label lblCompressionRatioIn{*this, "lblCompressionRatioIn",
                                naming("Compression ration (in):", txtCompressionRatioIn)};
    Label lblCompressionRatioOut{*this, "lblCompressionRatioOut",
                                 naming("Compression ratio (out):", txtCompressionRatioOut)};
    Label lblConnectDuration{*this, "lblConnectDuration",
                             naming("Connect duration (ms):", txtConnectDuration)};
    Label lblHostName{*this, "lblHostName", naming("Hostname:", txtHostName)};
    Label lblIPAddress{*this, "lblIPAddress", naming("IP-adress(es):", txtIPAddress)};
    Label lblAverageThroughput{*this, "lblAverageThroughput",
                               naming("Aver. throughput (bps):", txtAverageThroughput)};

    Frame frameInternetState{*this, "frameInternetState", {"Internet connected state:"}};
    CheckBox chkInternetState{*this, "chkInternetState", {.caption = "Enable", .mnemonic = 'n'}};
    TextBox txtConnectionName{
        *this, "txtConnectionName", {.text = "(not obtained)", .readOnly = true}};
    Label lblConnectionName{
        *this, "lblConnectionName",
        naming("Name of current Connection to the Internet:", txtConnectionName)};
    CheckBox chkConnected{*this, "chkConnected", lamp("Computer is connected to the Internet")};
    CheckBox chkConnectionConfigured{*this, "chkConnectionConfigured",
                                     lamp("An Internet connection is configured")};
    CheckBox chkModemUsed{*this, "chkModemUsed",
                          lamp("A modem is used to connect to the Internet")};
    CheckBox chkLANUsed{*this, "chkLANUsed", lamp("A LAN is used to connect to the Internet")};
    CheckBox chkProxyUsed{*this, "chkProxyUsed",
                          lamp("A proxy is used to connect to the Internet")};
    CheckBox chkRASUsed{*this, "chkRASUsed", lamp("RAS is used to connect to the Internet")};
    CheckBox chkOffline{*this, "chkOffline", lamp("Computer is currently in offline mode")};
    CheckBox chkModemBusy{*this, "chkModemBusy", lamp("The modem is currently busy")};

    Label lblTimeStamp{*this, "lblTimeStamp", {"Updated at: (Not yet obtained.)"}};
    CommandButton cmdCancel{
        *this,
        "cmdCancel",
        {.caption = "Cancel", .toolTip = "Close the statistics dialog", .mnemonic = 'C'}};

private:
    static TextBox::Setup counter() { return {.readOnly = true}; }
    static Label::Setup naming(const char* caption, TextBox& box) {
        return {.caption = caption, .labelled = &box};
    }
    static CheckBox::Setup lamp(const char* caption) {
        return {.caption = caption, .readOnly = true};
    }
};

} // namespace tarvik
