"""The built program on a real NetworkManager and a real VPN."""
