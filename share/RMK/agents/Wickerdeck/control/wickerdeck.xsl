<?xml version="1.0" encoding="UTF-8"?>
<!--
  From a dump of Wickerdeck 3 (wickerdeck.dtd) to a canonical dump. docs/agents.md has the table of
  what becomes what, and what is dropped.

  Attributes that are missing have the meaning that the DTD gives beside them: nothing has filled
  them in. A number that is none ends the translation, because a restore without that limit would
  give everything away.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:output method="xml" encoding="UTF-8" indent="yes"/>

  <xsl:key name="plan" match="plan" use="@id"/>

  <xsl:template match="/wickerdeck">
    <migration-dump>
      <admin>
        <resellers><xsl:apply-templates select="partner"/></resellers>
        <clients><xsl:apply-templates select="customer"/></clients>
        <domains><xsl:apply-templates select="site"/></domains>
      </admin>
    </migration-dump>
  </xsl:template>

  <!-- Accounts ============================================================================ -->

  <xsl:template match="partner">
    <reseller>
      <xsl:call-template name="account"/>
      <clients><xsl:apply-templates select="customer"/></clients>
    </reseller>
  </xsl:template>

  <xsl:template match="customer">
    <client><xsl:call-template name="account"/></client>
  </xsl:template>

  <xsl:template name="account">
    <xsl:attribute name="name"><xsl:value-of select="@login"/></xsl:attribute>
    <xsl:attribute name="contact"><xsl:value-of select="normalize-space(person/name)"/></xsl:attribute>
    <xsl:apply-templates select="@uuid | @opened"/>
    <preferences><xsl:apply-templates select="person/*" mode="pinfo"/></preferences>
    <properties>
      <xsl:apply-templates select="secret"/>
      <xsl:call-template name="status"/>
    </properties>
    <limits-and-permissions>
      <xsl:call-template name="limits"/>
      <xsl:apply-templates select="right"/>
      <xsl:apply-templates select="key('plan', @plan)/right[not(@to = current()/right/@to)]"/>
    </limits-and-permissions>
    <ip_pool><xsl:apply-templates select="address"/></ip_pool>
    <xsl:call-template name="traffic"/>
    <domains><xsl:apply-templates select="site"/></domains>
  </xsl:template>

  <!-- Sites =============================================================================== -->

  <xsl:template match="site">
    <domain name="{@name}" www="{not(@www = 'no')}">
      <xsl:apply-templates select="@uuid | @opened"/>
      <properties>
        <xsl:apply-templates select="address[1]"/>
        <xsl:call-template name="status"/>
      </properties>
      <limits-and-permissions><xsl:call-template name="limits"/></limits-and-permissions>
      <xsl:apply-templates select="keeper"/>
      <xsl:call-template name="traffic"/>
    </domain>
  </xsl:template>

  <!-- The rights of a plan are the keeper's. -->
  <xsl:template match="keeper">
    <domainuser contact="{normalize-space(person/name)}" status="{not(@enters = 'no')}">
      <xsl:apply-templates select="secret | right"/>
      <xsl:apply-templates select="key('plan', ../@plan)/right[not(@to = current()/right/@to)]"/>
      <xsl:apply-templates select="person/*" mode="pinfo"/>
    </domainuser>
  </xsl:template>

  <!-- What they share ===================================================================== -->

  <xsl:template match="@uuid"><xsl:attribute name="guid"><xsl:value-of select="."/></xsl:attribute></xsl:template>
  <xsl:template match="@opened">
    <xsl:attribute name="cr-date"><xsl:value-of select="substring(., 1, 10)"/></xsl:attribute>
  </xsl:template>

  <xsl:template name="status">
    <status>
      <xsl:choose>
        <xsl:when test="@state = 'closed-by-operator'"><disabled-by name="admin"/></xsl:when>
        <xsl:when test="@state = 'closed-by-partner'"><disabled-by name="reseller"/></xsl:when>
        <xsl:when test="@state = 'closed-by-customer'"><disabled-by name="client"/></xsl:when>
        <xsl:otherwise><enabled/></xsl:otherwise>
      </xsl:choose>
    </status>
  </xsl:template>

  <xsl:template match="secret">
    <password type="plain"><xsl:value-of select="."/></password>
  </xsl:template>
  <xsl:template match="secret[@form = 'base64']">
    <password type="plain" encoding="base64"><xsl:value-of select="normalize-space()"/></password>
  </xsl:template>
  <xsl:template match="secret[@form = 'crypt']">
    <password type="encrypted"><xsl:value-of select="normalize-space()"/></password>
  </xsl:template>

  <xsl:template match="address">
    <ip>
      <ip-address><xsl:value-of select="@ip"/></ip-address>
      <ip-type>
        <xsl:choose>
          <xsl:when test="@use = 'own'">exclusive</xsl:when>
          <xsl:otherwise>shared</xsl:otherwise>
        </xsl:choose>
      </ip-type>
    </ip>
  </xsl:template>

  <!-- A day's row: date, service, bytes in, bytes out. -->
  <xsl:template name="traffic">
    <xsl:if test="usage">
      <traffic>
        <xsl:for-each select="usage">
          <xsl:value-of select="concat(@day, '&#9;', @of, '&#9;', @in, '&#9;', @out, '&#10;')"/>
        </xsl:for-each>
      </traffic>
    </xsl:if>
  </xsl:template>

  <!-- Contact data ======================================================================== -->

  <xsl:template match="*" mode="pinfo">
    <xsl:variable name="name"><xsl:apply-templates select="." mode="pinfo-name"/></xsl:variable>
    <xsl:if test="string($name) and normalize-space()">
      <pinfo name="{$name}"><xsl:value-of select="normalize-space()"/></pinfo>
    </xsl:if>
  </xsl:template>

  <xsl:template mode="pinfo-name" match="mail">email</xsl:template>
  <xsl:template mode="pinfo-name" match="firm">company</xsl:template>
  <xsl:template mode="pinfo-name" match="phone">phone</xsl:template>
  <xsl:template mode="pinfo-name" match="fax">fax</xsl:template>
  <xsl:template mode="pinfo-name" match="street">address</xsl:template>
  <xsl:template mode="pinfo-name" match="town">city</xsl:template>
  <xsl:template mode="pinfo-name" match="region">state</xsl:template>
  <xsl:template mode="pinfo-name" match="postcode">zip</xsl:template>
  <xsl:template mode="pinfo-name" match="country">country</xsl:template>
  <xsl:template mode="pinfo-name" match="language">locale</xsl:template>
  <xsl:template mode="pinfo-name" match="*"/>

  <!-- Rights ============================================================================== -->

  <xsl:template match="right">
    <xsl:variable name="name"><xsl:apply-templates select="@to"/></xsl:variable>
    <xsl:if test="string($name)">
      <permission name="{$name}" value="{not(@granted = 'no')}"/>
    </xsl:if>
  </xsl:template>

  <xsl:template match="@to[. = 'make-customers']">create_clients</xsl:template>
  <xsl:template match="@to[. = 'make-sites']">create_domains</xsl:template>
  <xsl:template match="@to[. = 'oversell']">allow_oversell</xsl:template>
  <xsl:template match="@to[. = 'hosting']">manage_phosting</xsl:template>
  <xsl:template match="@to[. = 'dns']">manage_dns</xsl:template>
  <xsl:template match="@to[. = 'logs']">manage_log</xsl:template>
  <xsl:template match="@to[. = 'cron']">manage_crontab</xsl:template>
  <xsl:template match="@to[. = 'shell']">manage_sh_access</xsl:template>
  <xsl:template match="@to[. = 'many-sessions']">multiple-sessions</xsl:template>
  <xsl:template match="@to"/>

  <!-- Limits ============================================================================== -->

  <xsl:template name="limits">
    <xsl:apply-templates select="quota"/>
    <xsl:apply-templates select="key('plan', @plan)/quota[not(@of = current()/quota/@of)]"/>
    <xsl:if test="@closes">
      <limit name="expiration">
        <xsl:call-template name="number"><xsl:with-param name="value" select="@closes"/></xsl:call-template>
      </limit>
    </xsl:if>
  </xsl:template>

  <xsl:template match="quota">
    <xsl:variable name="name"><xsl:apply-templates select="@of"/></xsl:variable>
    <xsl:if test="string($name)">
      <limit name="{$name}">
        <xsl:choose>
          <xsl:when test="@amount = 'unlimited'">-1</xsl:when>
          <xsl:otherwise><xsl:apply-templates select="@amount"/></xsl:otherwise>
        </xsl:choose>
      </limit>
    </xsl:if>
  </xsl:template>

  <xsl:template match="@of[. = 'disk']">disk_space</xsl:template>
  <xsl:template match="@of[. = 'disk-warning']">disk_space_soft</xsl:template>
  <xsl:template match="@of[. = 'traffic']">max_traffic</xsl:template>
  <xsl:template match="@of[. = 'traffic-warning']">max_traffic_soft</xsl:template>
  <xsl:template match="@of[. = 'mailbox-size']">mbox_quota</xsl:template>
  <xsl:template match="@of[. = 'mailboxes']">max_box</xsl:template>
  <xsl:template match="@of[. = 'databases']">max_db</xsl:template>
  <xsl:template match="@of[. = 'lists']">max_maillists</xsl:template>
  <xsl:template match="@of[. = 'sites']">max_dom</xsl:template>
  <xsl:template match="@of[. = 'customers']">max_cl</xsl:template>
  <xsl:template match="@of"/>

  <!-- Sizes are given in units, the rest is counted. -->
  <xsl:template match="@amount">
    <xsl:call-template name="number"><xsl:with-param name="value" select="."/></xsl:call-template>
  </xsl:template>
  <xsl:template match="quota[@of = 'disk' or @of = 'disk-warning' or @of = 'traffic' or
                             @of = 'traffic-warning' or @of = 'mailbox-size']/@amount">
    <xsl:variable name="unit">
      <xsl:choose>
        <xsl:when test="../@unit = 'B'">1</xsl:when>
        <xsl:when test="../@unit = 'KB'">1024</xsl:when>
        <xsl:when test="../@unit = 'GB'">1073741824</xsl:when>
        <xsl:otherwise>1048576</xsl:otherwise>
      </xsl:choose>
    </xsl:variable>
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * $unit"/></xsl:call-template>
  </xsl:template>

  <!-- A whole number in decimal digits; XPath writes big ones with an exponent. Up to 2^53 they are
       exact. -->
  <xsl:template name="number">
    <xsl:param name="value"/>
    <xsl:if test="not($value &gt;= 0 and $value &lt;= 9007199254740992)">
      <xsl:message terminate="yes">
        <xsl:value-of select="concat('Not an amount: ', name(..), ' ', ../@of, ' &quot;', ., '&quot;')"/>
      </xsl:message>
    </xsl:if>
    <xsl:value-of select="format-number(round($value), '0')"/>
  </xsl:template>

</xsl:stylesheet>
